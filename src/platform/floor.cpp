// std::floor for what ships, which is linked without the compiler's library of mathematics: most of that library needs a
// processor later than the 486, and nobody would see when more of it came along.
#include <cmath>
#include <cstdint>

extern "C" double floor(double number) {
  constexpr double kAllWhole = 4503599627370496.0;  // 2^52: no double from here on has a fraction
  if (!(number > -kAllWhole && number < kAllWhole)) return number;
  const auto whole = static_cast<double>(static_cast<std::int64_t>(number));
  if (whole == number) return number;
  return whole > number ? whole - 1.0 : whole;
}
