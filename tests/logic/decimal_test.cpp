// The conversions agree with those of this machine's C library, which are exact, whatever the number.
#include "platform/decimal.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using platform::DecimalText;
using platform::DecimalValue;

namespace {

std::string LibraryText(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.15g", number == 0.0 ? 0.0 : number);
  return text;
}

std::uint64_t LibraryBits(const std::string& text) {
  return std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr));
}
std::uint64_t Bits(const std::string& text) { return std::bit_cast<std::uint64_t>(DecimalValue(text)); }

// All digits of the number halfway between `low` and the next double.
std::string Halfway(double low) {
  const double high = std::bit_cast<double>(std::bit_cast<std::uint64_t>(low) + 1);
  char text[1300];
  std::snprintf(text, sizeof text, "%.1100Lg", (static_cast<long double>(low) + high) / 2);
  return text;
}

double FiniteNumber(std::mt19937_64& random) {
  for (;;) {
    const double number = std::bit_cast<double>(random());
    if (std::isfinite(number)) return number;
  }
}

}  // namespace

TEST(DecimalText, AgreesWithTheLibraryOnNumbersOfEverySize) {
  std::mt19937_64 random(1);
  for (int round = 0; round < 2000; ++round) {
    const double number = FiniteNumber(random);
    ASSERT_EQ(DecimalText(number), LibraryText(number));
    const double denormal = std::bit_cast<double>(random() >> (12 + random() % 52));
    ASSERT_EQ(DecimalText(denormal), LibraryText(denormal));
  }
}

TEST(DecimalText, AgreesWithTheLibraryOnHalvesOfTheLastDigit) {
  std::mt19937_64 random(2);
  for (int round = 0; round < 20000; ++round) {
    const auto digits = static_cast<double>(1'000'000'000'000'000 + random() % 8'000'000'000'000'000);
    for (const double divisor : {1.0, 2.0, 8.0, 1048576.0})
      ASSERT_EQ(DecimalText(digits / divisor), LibraryText(digits / divisor));
  }
  EXPECT_EQ(DecimalText(86737.03955078125), "86737.0395507812");  // the system's own conversion gives ...813
  EXPECT_EQ(DecimalText(1000000000000005.0), "1e+15");
  EXPECT_EQ(DecimalText(1000000000000015.0), "1.00000000000002e+15");
}

TEST(DecimalText, AgreesWithTheLibraryWhereTheExponentBegins) {
  for (const double number : {1e-5,
                              9.99999999999999e-5,
                              9.9999999999999995e-5,
                              1e-4,
                              0.1,
                              1.0,
                              999999999999999.0,
                              999999999999999.5,
                              1e15,
                              1e16,
                              1e99,
                              1e100,
                              1e-99,
                              1e-100,
                              0.0,
                              -0.0,
                              -1e-7,
                              std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::min(),
                              std::numeric_limits<double>::denorm_min(),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity()})
    EXPECT_EQ(DecimalText(number), LibraryText(number));
  EXPECT_EQ(DecimalText(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(DecimalValue, AgreesWithTheLibraryOnWhatNumbersAreWrittenAs) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 4000; ++round) {
    char text[80];
    std::snprintf(text, sizeof text, "%.*g", static_cast<int>(random() % 20) + 1, FiniteNumber(random));
    ASSERT_EQ(Bits(text), LibraryBits(text)) << text;
    std::snprintf(text, sizeof text, "%lld.%llue%d", static_cast<long long>(random()),
                  static_cast<unsigned long long>(random()), static_cast<int>(random() % 700) - 350);
    ASSERT_EQ(Bits(text), LibraryBits(text)) << text;
  }
}

TEST(DecimalValue, SendsHalvesToTheEvenNeighbourAndMoreThanThatUp) {
  std::mt19937_64 random(4);
  for (int round = 0; round < 300; ++round) {
    const std::string halfway = Halfway(std::abs(FiniteNumber(random)));
    const std::size_t end = std::min(halfway.find('e'), halfway.size());
    const std::string point = halfway.find('.') == std::string::npos ? "." : "";
    const std::string above = halfway.substr(0, end) + point + std::string(900, '0') + "1" + halfway.substr(end);
    ASSERT_EQ(Bits(halfway), LibraryBits(halfway)) << halfway;
    ASSERT_EQ(Bits(above), LibraryBits(above)) << above;
  }
}

TEST(DecimalValue, AgreesWithTheLibraryAtTheEnds) {
  const std::string texts[] = {"0",
                               "-0",
                               "+1",
                               "1.",
                               ".5",
                               "1e5",
                               "1E+05",
                               "1e-400",
                               "1e400",
                               "1e99999999999",
                               "0e99999999999",
                               "1e-99999999999",
                               "2.4703282292062327e-324",
                               "2.4703282292062328e-324",
                               "4.9e-324",
                               "2.2250738585072011e-308",
                               "2.2250738585072014e-308",
                               "1.7976931348623157e308",
                               "1.7976931348623158e308",
                               "1.7976931348623159e308",
                               "9007199254740993",
                               "9007199254740992.99999999999",
                               "9007199254740993.00000000001",
                               "0." + std::string(5000, '0') + "1e5001",
                               std::string(5000, '9'),
                               "1" + std::string(3000, '0') + "e-3000",
                               "-" + std::string(300, '0') + "7"};
  for (const std::string& text : texts) EXPECT_EQ(Bits(text), LibraryBits(text)) << text.substr(0, 60);
}
