// Texts of 16-bit characters: what the wide functions of the system take, and every path. Natively, where wchar_t has 32
// bits, another type of the same 16, so that rules over wide texts are tested there with lone surrogates and all.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

#ifdef _WIN32
using WideChar = wchar_t;
#else
using WideChar = char16_t;
#endif
static_assert(sizeof(WideChar) == 2);
using WideText = std::basic_string<WideChar>;
using WideView = std::basic_string_view<WideChar>;

template <std::size_t kSize>
struct AsciiLiteral {
  WideChar text[kSize] = {};
  constexpr AsciiLiteral(const char (&literal)[kSize]) {  // not explicit: the literal operator's argument
    for (std::size_t at = 0; at < kSize; ++at) {
      if (literal[at] < 0) throw "no ASCII";  // does not compile
      text[at] = static_cast<WideChar>(literal[at]);
    }
  }
};

// Wide<"C:\\">(): an ASCII literal as a wide text, with a NUL after its end.
template <AsciiLiteral kLiteral>
constexpr WideView Wide() {
  return {kLiteral.text, sizeof kLiteral.text / sizeof(WideChar) - 1};
}

// Without the blanks (0x20) at both ends.
WideText Trim(WideView text);

// By the system's own tables, for every letter.
bool EqualIgnoringCase(WideView one, WideView other);

}  // namespace platform
