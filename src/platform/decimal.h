// A double and its decimal text, exact and the same on every Windows: the C libraries of the old systems disagree about
// halves and about the digits of an exponent, and the compiler's own one needs a processor later than the 486.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Up to 15 significant digits, rounded to the nearest, halves to the even digit, without trailing zeros. Below 0.0001 and
// from 1e+15 on with an exponent of at least two digits.
std::string DecimalText(double number);

// The double nearest to the number, halves to the even one; infinity for a number too large. `text` holds an optional sign,
// at least one digit with or without a point among them, and an optional exponent, and nothing else.
double DecimalValue(std::string_view text);

}  // namespace platform
