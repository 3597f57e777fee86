#include "platform/text_value.h"

#include <cmath>
#include <cstddef>
#include <limits>

#include "platform/decimal.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"

namespace platform {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// Where the number that begins at the first byte ends; 0 when none begins there.
std::size_t NumberLength(std::string_view text) {
  std::size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const std::size_t whole = SkipDigits(text, at);
  std::size_t digits = whole - at;
  at = whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = SkipDigits(text, at + 1);
    digits += fraction - at - 1;
    at = fraction;
  }
  if (digits == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t end = SkipDigits(text, exponent);
    if (end > exponent) at = end;
  }
  return at;
}

double Convert(std::string_view number) {
  const double value = platform::DecimalValue(number);
  if (!std::isfinite(value)) Raise(kOverflow);
  return value;
}

double HalfToEven(double number) {
  const double floor = std::floor(number);
  const double rest = number - floor;
  if (rest < 0.5 || (rest == 0.5 && std::floor(floor / 2.0) * 2.0 == floor)) return floor;
  return floor + 1.0;
}

template <class Integer>
Integer Rounded(double number) {
  const double rounded = HalfToEven(number);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Integer>::max())))
    Raise(kOverflow);
  return static_cast<Integer>(rounded);
}

}  // namespace

double NumberOf(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::size_t length = NumberLength(trimmed);
  return length != 0 && length == trimmed.size() ? Convert(trimmed) : 0.0;
}

double ToDouble(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::size_t length = NumberLength(trimmed);
  if (length == 0 || length != trimmed.size()) Raise(kTypeMismatch);
  return Convert(trimmed);
}

double NumberAtHead(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::size_t length = NumberLength(trimmed);
  return length != 0 ? Convert(std::string_view(trimmed).substr(0, length)) : 0.0;
}

std::string TextOf(double number) { return platform::DecimalText(number); }

std::int16_t ToInteger(double number) { return Rounded<std::int16_t>(number); }
std::int32_t ToLong(double number) { return Rounded<std::int32_t>(number); }

std::int32_t ToLong(std::string_view text) { return ToLong(ToDouble(text)); }

bool ToBoolean(std::string_view text) {
  const std::string trimmed = Trim(text);
  if (EqualIgnoringCase(trimmed, "True")) return true;
  if (EqualIgnoringCase(trimmed, "False")) return false;
  return ToDouble(trimmed) != 0.0;
}

}  // namespace platform
