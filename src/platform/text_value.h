// Between the texts that settings and boxes hold and the values that they mean.
//
// Texts are single-byte, the decimal sign is "." whatever the locale. A conversion that overflows raises the run-time
// error 6.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/plain_text.h"

namespace platform {

// The number that the whole text is, blanks around it allowed; 0 for a text that is not a number.
double NumberOf(std::string_view text);

// The same number. Raises 13 for a text that is not a number, also for an empty one.
double ToDouble(std::string_view text);

// The number at the head of the text ("60 minutes" is 60); 0 for a text without one.
double NumberAtHead(std::string_view text);

// Up to 15 significant digits without trailing zeros: 50, 0.25. Very large and very small numbers get an exponent: 1e+15.
std::string TextOf(double number);

// Halves go to the even neighbour. Raises 6 outside the type's range.
std::int16_t ToInteger(double number);
std::int32_t ToLong(double number);

// ToDouble as a 32-bit integer.
std::int32_t ToLong(std::string_view text);

// "True" and "False" ignoring case, or a number, true unless 0. Raises 13 for anything else.
bool ToBoolean(std::string_view text);

inline const char* BooleanText(bool value) { return value ? "True" : "False"; }

}  // namespace platform
