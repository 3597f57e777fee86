// Texts from the store and from boxes: every conversion ends with a value or with the run-time error 6 or 13, and the
// conversions agree with each other.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "property.h"

using namespace platform;

namespace {

template <class T>
struct Outcome {
  std::optional<T> value;
  int raised = 0;
};

template <class T, class Convert>
Outcome<T> Try(Convert convert) {
  try {
    return {convert(), 0};
  } catch (const RuntimeError& error) {
    return {std::nullopt, error.number};
  }
}

void CheckTrim(const std::string& text) {
  const std::string trimmed = Trim(text);
  PROPERTY(Trim(trimmed) == trimmed, "[%s]", text.c_str());
  PROPERTY(trimmed.empty() || (trimmed.front() != ' ' && trimmed.back() != ' '), "[%s]", text.c_str());
  PROPERTY(text.find(trimmed) != std::string::npos, "[%s]", text.c_str());
}

void CheckCase(const std::string& text) {
  const std::string upper = UpperCase(text);
  PROPERTY(upper.size() == text.size(), "[%s]", text.c_str());
  PROPERTY(UpperCase(upper) == upper, "[%s]", text.c_str());
  PROPERTY(EqualIgnoringCase(text, upper), "[%s]", text.c_str());
}

// What comes of rounding `number`: the nearest whole number inside `min` to `max`, or the error 6.
template <class Integer>
void CheckRounded(double number, const Outcome<Integer>& whole, double min, double max) {
  if (whole.value) {
    const double distance = std::fabs(number - *whole.value);
    PROPERTY(distance <= 0.5, "%.17g became %ld", number, static_cast<long>(*whole.value));
    PROPERTY(distance < 0.5 || *whole.value % 2 == 0, "%.17g became %ld", number, static_cast<long>(*whole.value));
  } else {
    PROPERTY(whole.raised == 6, "%.17g raised %d", number, whole.raised);
    PROPERTY(!(number >= min && number <= max), "%.17g raised 6", number);
  }
}

void CheckDouble(double number) {
  CheckRounded(number, Try<std::int16_t>([&] { return ToInteger(number); }), -32768.0, 32767.0);
  CheckRounded(number, Try<std::int32_t>([&] { return ToLong(number); }), -2147483648.0, 2147483647.0);
  const std::string text = TextOf(number);
  PROPERTY(!text.empty() && text.size() < 30, "%.17g became [%s]", number, text.c_str());
  if (!std::isfinite(number)) return;
  const Outcome<double> back = Try<double>([&] { return NumberOf(text); });
  // Fifteen digits may round the largest doubles up to one that does not exist.
  if (!back.value) {
    PROPERTY(back.raised == 6 && std::fabs(number) > 1.797e308, "[%s] raised %d", text.c_str(), back.raised);
    return;
  }
  const double error = std::fabs(*back.value - number);
  PROPERTY(error <= std::fabs(number) * 1e-14 + 1e-320, "%.17g became [%s]", number, text.c_str());
}

// The library reads the same numbers once it is kept from the forms of its own: hexadecimal, infinity, white space.
void CheckAgainstLibrary(const std::string& text, const Outcome<double>& head, bool isNumber) {
  std::string plain = text.substr(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t rest = plain.find_last_not_of(' ') + 1;
  plain.resize(rest);
  plain.resize(std::min(plain.find_first_not_of("0123456789.+-eE"), plain.size()));
  char* end = nullptr;
  const double number = std::strtod(plain.c_str(), &end);
  const bool whole = rest != 0 && end == plain.c_str() + rest;
  PROPERTY(isNumber == whole, "[%s] begins with the number %g", text.c_str(), number);
  PROPERTY(head.value ? *head.value == number : std::isinf(number), "[%s] begins with the number %g", text.c_str(), number);
}

void CheckNumbers(const std::string& text) {
  const Outcome<double> number = Try<double>([&] { return NumberOf(text); });
  const Outcome<double> head = Try<double>([&] { return NumberAtHead(text); });
  const Outcome<std::int32_t> whole = Try<std::int32_t>([&] { return ToLong(std::string_view(text)); });
  const Outcome<bool> boolean = Try<bool>([&] { return ToBoolean(text); });

  for (const Outcome<double>* each : {&number, &head}) {
    PROPERTY(each->value || each->raised == 6, "[%s] raised %d", text.c_str(), each->raised);
    PROPERTY(!each->value || std::isfinite(*each->value), "[%s]", text.c_str());
  }
  PROPERTY(whole.value || whole.raised == 6 || whole.raised == 13, "[%s] raised %d", text.c_str(), whole.raised);

  CheckAgainstLibrary(text, head, whole.raised != 13);
  if (whole.raised == 13) {
    PROPERTY(number.value && *number.value == 0.0, "[%s] is no number", text.c_str());
    for (const bool word : {false, true})
      PROPERTY((boolean.value == word) == EqualIgnoringCase(Trim(text), BooleanText(word)), "[%s] as a boolean",
               text.c_str());
    PROPERTY(boolean.value || boolean.raised == 13, "[%s] raised %d", text.c_str(), boolean.raised);
    return;
  }
  PROPERTY(number.raised == head.raised && number.value == head.value, "[%s] is a number as a whole", text.c_str());
  if (!number.value) {
    PROPERTY(whole.raised == 6 && boolean.raised == 6, "[%s] is too large", text.c_str());
    return;
  }
  const Outcome<std::int32_t> rounded = Try<std::int32_t>([&] { return ToLong(*number.value); });
  PROPERTY(whole.value == rounded.value && whole.raised == rounded.raised, "[%s]", text.c_str());
  PROPERTY(boolean.value && *boolean.value == (*number.value != 0.0), "[%s]", text.c_str());
  CheckDouble(*number.value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckTrim(text);
  CheckCase(text);
  CheckNumbers(text);
  double number = 0.0;
  std::memcpy(&number, data, size < sizeof number ? size : sizeof number);
  CheckDouble(number);
  return 0;
}
