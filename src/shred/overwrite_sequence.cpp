#include "shred/overwrite_sequence.h"

#include <cmath>
#include <string>

#include "platform/runtime_error.h"
#include "platform/text_value.h"

namespace shred {
using namespace platform;

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kIntegerTen = "\x0A\0\0\0"sv;  // 32 bits, little-endian
constexpr std::string_view kMark = "\xEA\xDE"sv;
constexpr std::string_view kOneAndE7 = "1\xE7"sv;
constexpr std::string_view kDash = "\x97"sv;  // of the Windows-1252 code page
constexpr std::string_view kZero = "\0"sv;

}  // namespace

std::int16_t RepeatCount(std::string_view levelText) {
  const double tenfold = ToDouble(levelText) * 10.0;
  if (!std::isfinite(tenfold)) Raise(kOverflow);
  // By way of its text, which has 15 digits: "2.0500000000000003" is 20.5 there, and so 20.
  return ToInteger(ToDouble(TextOf(tenfold)));
}

// clang-format off
OverwriteRuns OverwriteSequence(std::int16_t repeatCount) {
  const int n = repeatCount;
  return {{
      {kIntegerTen, n}, {kMark, n}, {kOneAndE7, n},
      {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n}, {"10", n},
      {".", n}, {".", n}, {"V", n}, {"e", n}, {"r", n}, {kDash, n}, {"1", n}, {".", n}, {"0", n}, {".", n}, {"0", n},
      {kIntegerTen, n}, {kIntegerTen, n}, {kIntegerTen, n}, {kIntegerTen, 10}, {kIntegerTen, 100},
      {kZero, n},
  }};
}
// clang-format on

}  // namespace shred
