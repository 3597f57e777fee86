#include "platform/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace platform {
namespace {

// A double is mantissa * 2^exponent: 52 stored bits and a leading one that is not stored, except at the least exponent.
constexpr int kMantissaBits = 52;
constexpr int kLeastExponent = -1074;
constexpr std::uint64_t kLeadingOne = std::uint64_t{1} << kMantissaBits;
constexpr std::uint64_t kInfinity = std::uint64_t{2047} << kMantissaBits;

constexpr int kSignificantDigits = 15;
constexpr int kDigitsThatCount = 800;  // more than any number halfway between two doubles has
constexpr int kTooLarge = 310;         // numbers from 10^309 on are infinity
constexpr int kTooSmall = -330;        // numbers below 10^-330 are 0

// A whole number of up to 3,200 bits, in words of 16 so that no product and no quotient needs more than 32.
class Natural {
 public:
  explicit Natural(std::uint64_t value) {
    for (; value != 0; value >>= 16) words_[count_++] = static_cast<std::uint16_t>(value);
  }

  // Factor and summand below 65,536, as the divisor.
  void MultiplyAdd(std::uint32_t factor, std::uint32_t summand) {
    std::uint32_t carry = summand;
    for (std::size_t at = 0; at < count_; ++at) {
      carry += words_[at] * factor;
      words_[at] = static_cast<std::uint16_t>(carry);
      carry >>= 16;
    }
    if (carry != 0) words_[count_++] = static_cast<std::uint16_t>(carry);
  }

  // Gives the remainder.
  std::uint32_t Divide(std::uint32_t divisor) {
    std::uint32_t rest = 0;
    for (std::size_t at = count_; at-- > 0;) {
      rest = rest << 16 | words_[at];
      words_[at] = static_cast<std::uint16_t>(rest / divisor);
      rest %= divisor;
    }
    while (count_ > 0 && words_[count_ - 1] == 0) --count_;
    return rest;
  }

  // Base up to 10.
  void MultiplyByPowerOf(std::uint32_t base, int power) {
    for (; power >= 4; power -= 4) MultiplyAdd(base * base * base * base, 0);
    for (; power > 0; --power) MultiplyAdd(base, 0);
  }

  // Multiplies by 65,536.
  void ShiftWord() {
    std::copy_backward(words_.begin(), words_.begin() + count_, words_.begin() + count_ + 1);
    words_[0] = 0;
    ++count_;
  }

  bool IsZero() const { return count_ == 0; }
  int Words() const { return static_cast<int>(count_); }
  int Bits() const { return IsZero() ? 0 : 16 * (Words() - 1) + std::bit_width(words_[count_ - 1]); }
  bool Bit(int at) const { return at >= 0 && at < 16 * Words() && (words_[at / 16] >> at % 16 & 1) != 0; }
  bool AnyBitBelow(int end) const {
    for (int at = 0; at < end; ++at)
      if (Bit(at)) return true;
    return false;
  }

 private:
  std::array<std::uint16_t, 200> words_;  // the first `count_` are in use, the last of them is not 0
  std::size_t count_ = 0;
};

// Every digit of the positive number whose bits these are, without leading zeros; the number is digits * 10^exponent.
std::string AllDigits(std::uint64_t bits, int& exponent) {
  std::uint64_t mantissa = bits & (kLeadingOne - 1);
  int power = static_cast<int>(bits >> kMantissaBits);
  if (power != 0) {
    mantissa |= kLeadingOne;
    --power;
  }
  power += kLeastExponent;
  for (; power < 0 && mantissa % 2 == 0; ++power) mantissa /= 2;

  Natural whole(mantissa);
  whole.MultiplyByPowerOf(2, power);
  whole.MultiplyByPowerOf(5, -power);  // m / 2^k is m * 5^k / 10^k
  exponent = std::min(power, 0);
  std::string digits;
  while (!whole.IsZero()) {
    std::uint32_t four = whole.Divide(10000);
    for (int count = 0; count < 4; ++count, four /= 10) digits += static_cast<char>('0' + four % 10);
  }
  digits.erase(digits.find_last_not_of('0') + 1);  // at the head of the number, which is still the end of the text
  std::reverse(digits.begin(), digits.end());
  return digits;
}

// Leaves at most 15 digits, none of them a zero at the end. A carry out of the first digit makes it 1 and adds to `point`,
// the number of digits before the decimal point.
void RoundDigits(std::string& digits, int& point) {
  if (digits.size() > kSignificantDigits) {
    const char next = digits[kSignificantDigits];
    const bool exactHalf = next == '5' && digits.find_first_not_of('0', kSignificantDigits + 1) == std::string::npos;
    digits.resize(kSignificantDigits);
    if (exactHalf ? (digits.back() - '0') % 2 != 0 : next >= '5') {
      while (!digits.empty() && digits.back() == '9') digits.pop_back();
      if (digits.empty()) {
        digits = "0";
        ++point;
      }
      ++digits.back();
    }
  }
  digits.erase(digits.find_last_not_of('0') + 1);
}

// 0.d1d2d3... * 10^point as the least of text: plain where that is short, else with an exponent.
std::string Written(std::string digits, int point) {
  const int exponent = point - 1;
  if (exponent < -4 || exponent >= kSignificantDigits) {
    if (digits.size() > 1) digits.insert(1, 1, '.');
    const int size = exponent < 0 ? -exponent : exponent;
    return digits + (exponent < 0 ? "e-" : "e+") + (size < 10 ? "0" : "") + std::to_string(size);
  }
  if (point <= 0) return "0." + std::string(-point, '0') + digits;
  const auto whole = static_cast<std::size_t>(point);
  if (digits.size() > whole) return digits.insert(whole, 1, '.');
  digits.append(whole - digits.size(), '0');
  return digits;
}

// A number as it is written: digits * 10^exponent, digits without zeros at the head.
struct Parsed {
  bool negative = false;
  std::string digits;
  int exponent = 0;
};

int ParsedExponent(std::string_view text) {
  const bool negative = !text.empty() && text[0] == '-';
  int exponent = 0;
  for (const char c : text)
    if (c >= '0' && c <= '9') exponent = std::min(exponent * 10 + (c - '0'), 1'000'000);
  return negative ? -exponent : exponent;
}

Parsed Parse(std::string_view text) {
  Parsed parsed;
  parsed.negative = text.starts_with('-');
  const std::size_t exponentAt = std::min(text.find_first_of("eE"), text.size());
  if (exponentAt < text.size()) parsed.exponent = ParsedExponent(text.substr(exponentAt + 1));
  bool afterPoint = false;
  bool moreDigits = false;
  for (const char c : text.substr(0, exponentAt)) {
    if (c == '.') afterPoint = true;
    if (c < '0' || c > '9') continue;
    const bool counts = parsed.digits.size() < kDigitsThatCount;
    if (counts && (c != '0' || !parsed.digits.empty())) parsed.digits += c;
    if (!counts && c != '0') moreDigits = true;
    parsed.exponent += (counts ? 0 : 1) - (afterPoint ? 1 : 0);
  }
  if (moreDigits) parsed.digits.back() = '1';  // never a halfway case, and larger than without them
  return parsed;
}

// The double nearest to whole * 2^power; `more` when the number is a little larger than that.
std::uint64_t NearestBits(const Natural& whole, int power, bool more) {
  const int drop = std::max(whole.Bits() - (kMantissaBits + 1), kLeastExponent - power);
  std::uint64_t mantissa = 0;
  for (int at = whole.Bits() - 1; at >= drop; --at) mantissa = mantissa * 2 + (whole.Bit(at) ? 1 : 0);
  if (whole.Bit(drop - 1) && (more || mantissa % 2 != 0 || whole.AnyBitBelow(drop - 1))) ++mantissa;
  // A mantissa without the leading one only occurs at the least exponent, whose field is 0; the leading one adds the 1.
  const auto field = static_cast<std::uint64_t>(power + drop - kLeastExponent);
  return std::min((field << kMantissaBits) + mantissa, kInfinity);
}

std::uint64_t BitsOf(const Parsed& parsed) {
  const int point = static_cast<int>(parsed.digits.size()) + parsed.exponent;
  if (parsed.digits.empty() || point < kTooSmall) return 0;
  if (point > kTooLarge) return kInfinity;
  Natural whole(0);
  for (const char digit : parsed.digits) whole.MultiplyAdd(10, static_cast<std::uint32_t>(digit - '0'));
  if (parsed.exponent >= 0) {
    whole.MultiplyByPowerOf(10, parsed.exponent);
    return NearestBits(whole, 0, false);
  }
  // The quotient keeps at least 64 bits: 5^k is shorter than 7k/48 words, rounded up.
  const int tens = -parsed.exponent;
  int power = -tens;
  for (; whole.Words() < 6 + tens * 7 / 48; power -= 16) whole.ShiftWord();
  bool rest = false;
  for (int left = tens; left > 0; --left) rest |= whole.Divide(5) != 0;
  return NearestBits(whole, power, rest);
}

}  // namespace

std::string DecimalText(double number) {
  const auto bits = std::bit_cast<std::uint64_t>(number);
  const std::uint64_t size = bits & ~(std::uint64_t{1} << 63);
  if (size == 0) return "0";
  if (size > kInfinity) return "nan";
  const std::string sign = size != bits ? "-" : "";
  if (size == kInfinity) return sign + "inf";
  int exponent = 0;
  std::string digits = AllDigits(size, exponent);
  int point = static_cast<int>(digits.size()) + exponent;
  RoundDigits(digits, point);
  return sign + Written(std::move(digits), point);
}

double DecimalValue(std::string_view text) {
  const Parsed parsed = Parse(text);
  return std::bit_cast<double>(BitsOf(parsed) | (parsed.negative ? std::uint64_t{1} << 63 : 0));
}

}  // namespace platform
