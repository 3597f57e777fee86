#include "platform/text_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "raised.h"

using namespace platform;

namespace {

const std::size_t kLong = 10000;

std::string Repeat(char c, std::size_t count) { return std::string(count, c); }

std::string Shown(const std::string& text) {
  return text.size() <= 40 ? "[" + text + "]" : "[" + text.substr(0, 40) + "...] of " + std::to_string(text.size());
}

struct Number {
  std::string text;
  double value;
};

// Texts that are numbers as a whole.
const Number kNumbers[] = {
    {"0", 0},
    {"1", 1},
    {"50", 50},
    {"007", 7},
    {"-1", -1},
    {"+1", 1},
    {"-0", 0},
    {"  60  ", 60},
    {"0.25", 0.25},
    {".5", 0.5},
    {"-.5", -0.5},
    {"5.", 5},
    {"+5.", 5},
    {"1e3", 1000},
    {"1E3", 1000},
    {"1e+3", 1000},
    {"25e-2", 0.25},
    {"1e03", 1000},
    {".5e1", 5},
    {"5.e1", 50},
    {"1e-400", 0},
    {"0e400", 0},
    {"32767", 32767},
    {"2147483647", 2147483647.0},
    {"123456789012345", 123456789012345.0},
    {"1e308", 1e308},
    {Repeat('0', kLong), 0},
    {Repeat('0', kLong - 1) + "5", 5},
    {"0." + Repeat('0', kLong) + "1", 0},
    {"1." + Repeat('0', kLong), 1},
    {Repeat(' ', kLong) + "7" + Repeat(' ', kLong), 7},
    {"1e-" + Repeat('9', kLong), 0},
};

struct Head {
  std::string text;
  double head;
};

// Texts that are not numbers as a whole, and what is at their head.
const Head kNotNumbers[] = {
    {"", 0},
    {" ", 0},
    {"-", 0},
    {"+", 0},
    {".", 0},
    {"-.", 0},
    {"e", 0},
    {"e3", 0},
    {".e3", 0},
    {"abc", 0},
    {"True", 0},
    {"9:00 AM", 9},
    {"60 minutes", 60},
    {"12abc", 12},
    {"0x10", 0},
    {"&H10", 0},
    {"1,5", 1},
    {"1.000,5", 1},
    {"1 2", 1},
    {"- 1", 0},
    {"--1", 0},
    {"+-1", 0},
    {"1-", 1},
    {"1..2", 1},
    {"1.2.3", 1.2},
    {"1e", 1},
    {"1e+", 1},
    {"1e-", 1},
    {"1e3.5", 1000},
    {"1d3", 1},
    {"1f", 1},
    {"2%", 2},
    {"\t1", 0},
    {"1\t", 1},
    {"\n1", 0},
    {"1\r\n", 1},
    {"\xA0"
     "1",
     0},
    {"inf", 0},
    {"-infinity", 0},
    {"nan", 0},
    {"0x1p3", 0},
    {std::string("1\0", 2), 1},
    {std::string("1\0"
                 "2",
                 3),
     1},
    {std::string("\0"
                 "1",
                 2),
     0},
    {Repeat('x', kLong), 0},
    {Repeat('-', kLong), 0},
    {Repeat('.', kLong), 0},
    {Repeat(' ', kLong), 0},
    {"3" + Repeat('x', kLong), 3},
    {"3" + Repeat('e', kLong), 3},
};

// Numbers that no double holds.
const std::string kTooLarge[] = {"1e309",
                                 "-1e309",
                                 "1e99999",
                                 "  1e400 ",
                                 Repeat('9', 400),
                                 Repeat('1', kLong),
                                 "-" + Repeat('1', kLong),
                                 "1e" + Repeat('9', kLong)};

}  // namespace

TEST(Trim, TakesTheBlanksAtBothEndsAndNothingElse) {
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("a"), "a");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim(" a"), "a");
  EXPECT_EQ(Trim("a "), "a");
  EXPECT_EQ(Trim("\ta\t"), "\ta\t");
  EXPECT_EQ(Trim(" \t "), "\t");
  EXPECT_EQ(Trim("\xA0 a"), "\xA0 a");
  EXPECT_EQ(Trim(std::string(" \0 ", 3)), std::string("\0", 1));
  EXPECT_EQ(Trim(Repeat(' ', kLong) + "x" + Repeat(' ', kLong)), "x");
}

TEST(UpperCase, ChangesAToZAndNoOtherByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const char upper = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : c;
    ASSERT_EQ(UpperCase(std::string(1, c)), std::string(1, upper)) << "byte " << byte;
  }
  EXPECT_EQ(UpperCase("c:\\Windows\\tEMP\xE9"), "C:\\WINDOWS\\TEMP\xE9");
  EXPECT_EQ(UpperCase(""), "");
}

TEST(EqualIgnoringCase, ComparesWholeTexts) {
  EXPECT_TRUE(EqualIgnoringCase("", ""));
  EXPECT_TRUE(EqualIgnoringCase("True", "tRUE"));
  EXPECT_FALSE(EqualIgnoringCase("True", "True "));
  EXPECT_FALSE(EqualIgnoringCase("True", "Tru"));
  EXPECT_FALSE(EqualIgnoringCase("", "a"));
  EXPECT_FALSE(EqualIgnoringCase("@", "`"));
  EXPECT_FALSE(EqualIgnoringCase("[", "{"));
}

TEST(NumberOf, ReadsATextThatIsANumberAsAWhole) {
  for (const Number& row : kNumbers) {
    EXPECT_EQ(NumberOf(row.text), row.value) << Shown(row.text);
    EXPECT_EQ(NumberOf("  " + row.text + " "), row.value) << "with blanks around it: " << Shown(row.text);
  }
}

TEST(NumberOf, IsZeroForATextThatIsNoNumberAsAWhole) {
  for (const Head& row : kNotNumbers) EXPECT_EQ(NumberOf(row.text), 0.0) << Shown(row.text);
}

TEST(ToDouble, ReadsATextThatIsANumberAsAWhole) {
  for (const Number& row : kNumbers) EXPECT_EQ(ToDouble(row.text), row.value) << Shown(row.text);
}

TEST(ToDouble, RaisesThirteenForATextThatIsNoNumber) {
  for (const Head& row : kNotNumbers) EXPECT_EQ(RaisedBy([&] { ToDouble(row.text); }), 13) << Shown(row.text);
}

TEST(NumberAtHead, ReadsTheNumberThatTheTextBeginsWith) {
  for (const Number& row : kNumbers) EXPECT_EQ(NumberAtHead(row.text), row.value) << Shown(row.text);
  for (const Head& row : kNotNumbers) EXPECT_EQ(NumberAtHead(row.text), row.head) << Shown(row.text);
}

TEST(NumberConversions, RaiseSixForANumberThatIsTooLarge) {
  for (const std::string& text : kTooLarge) {
    EXPECT_EQ(RaisedBy([&] { NumberOf(text); }), 6) << "NumberOf " << Shown(text);
    EXPECT_EQ(RaisedBy([&] { NumberAtHead(text); }), 6) << "NumberAtHead " << Shown(text);
    EXPECT_EQ(RaisedBy([&] { ToDouble(text); }), 6) << "ToDouble " << Shown(text);
    EXPECT_EQ(RaisedBy([&] { ToLong(text); }), 6) << "ToLong " << Shown(text);
    EXPECT_EQ(RaisedBy([&] { ToBoolean(text); }), 6) << "ToBoolean " << Shown(text);
  }
}

TEST(TextOf, WritesUpToFifteenDigitsWithoutTrailingZeros) {
  const Number rows[] = {
      {"50", 50},
      {"0.25", 0.25},
      {"0", 0},
      {"-2.5", -2.5},
      {"3.5", 0.35 * 10.0},
      {"0.3", 0.1 + 0.2},
      {"0.0001", 0.0001},
      {"100", 100.0},
      {"1000000", 1e6},
      {"32767", 32767},
      {"0.333333333333333", 1.0 / 3.0},
      {"0.666666666666667", 2.0 / 3.0},
      {"41599.75", 41599.75},
      {"123456789.123457", 123456789.1234567},
      {"123456789012345", 123456789012345.0},
      {"100000000000000", 1e14},
      {"999999999999999", 999999999999999.0},
      {"-999999999999999", -999999999999999.0},
  };
  for (const Number& row : rows) EXPECT_EQ(TextOf(row.value), row.text);
}

TEST(TextOf, IsReadBackAsTheSameNumberToFifteenDigits) {
  for (const double number : {0.25, 1.0 / 3.0, 1e-5, 1e-300, 2.5e17, 1e300, -7.125e-9, 123456.789})
    EXPECT_NEAR(NumberOf(TextOf(number)) / number, 1.0, 1e-14) << TextOf(number);
}

TEST(ToInteger, SendsHalvesToTheEvenNeighbour) {
  const struct {
    double number;
    int whole;
  } rows[] = {
      {0, 0},
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {3.5, 4},
      {-0.5, 0},
      {-1.5, -2},
      {-2.5, -2},
      {-3.5, -4},
      {0.49999999999999994, 0},
      {0.50000000000000011, 1},
      {2.4999999999999996, 2},
      {2.5000000000000004, 3},
      {24.999999, 25},
      {0.4, 0},
      {0.6, 1},
      {-0.4, 0},
      {-0.6, -1},
      {32766.5, 32766},
      {32767, 32767},
      {32767.4, 32767},
      {-32767.5, -32768},
      {-32768, -32768},
      {-32768.4, -32768},
      {-32768.5, -32768},
  };
  for (const auto& [number, whole] : rows) EXPECT_EQ(ToInteger(number), whole) << TextOf(number);
}

TEST(ToInteger, RaisesSixOutsideSixteenBits) {
  for (const double number :
       {32767.5, 32768.0, -32768.6, -32769.0, 65536.0, 2147483648.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(RaisedBy([&] { ToInteger(number); }), 6) << TextOf(number);
}

TEST(ToLong, SendsHalvesToTheEvenNeighbour) {
  const struct {
    double number;
    std::int32_t whole;
  } rows[] = {
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {-1.5, -2},
      {-2.5, -2},
      {32768, 32768},
      {100000.5, 100000},
      {100001.5, 100002},
      {2147483646.5, 2147483646},
      {2147483647, 2147483647},
      {2147483647.25, 2147483647},
      {-2147483648.0, std::numeric_limits<std::int32_t>::min()},
      {-2147483648.5, std::numeric_limits<std::int32_t>::min()},
  };
  for (const auto& [number, whole] : rows) EXPECT_EQ(ToLong(number), whole) << TextOf(number);
}

TEST(ToLong, RaisesSixOutsideThirtyTwoBits) {
  for (const double number : {2147483647.5, 2147483648.0, -2147483648.75, -2147483649.0, 4294967296.0, 1e300, -1e300,
                              std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(RaisedBy([&] { ToLong(number); }), 6) << TextOf(number);
}

TEST(ToLongOfAText, TakesTheWholeTextAndRoundsIt) {
  const struct {
    const char* text;
    std::int32_t whole;
  } rows[] = {
      {"121", 121},
      {" 121 ", 121},
      {"-1", -1},
      {"0", 0},
      {"2.5", 2},
      {"3.5", 4},
      {"1e3", 1000},
      {".5", 0},
      {".75", 1},
      {"+7", 7},
      {"007", 7},
      {"2147483647", 2147483647},
      {"-2147483648.5", -2147483647 - 1},
  };
  for (const auto& [text, whole] : rows) EXPECT_EQ(ToLong(text), whole) << "[" << text << "]";
}

TEST(ToLongOfAText, RaisesThirteenForATextThatIsNoNumber) {
  for (const Head& row : kNotNumbers) EXPECT_EQ(RaisedBy([&] { ToLong(row.text); }), 13) << Shown(row.text);
}

TEST(ToLongOfAText, RaisesSixOutsideThirtyTwoBits) {
  for (const char* text : {"2147483647.5", "2147483648", "-2147483649", "4294967295", "1e10", "1e300", "1e400"})
    EXPECT_EQ(RaisedBy([&] { ToLong(text); }), 6) << "[" << text << "]";
}

TEST(ToBoolean, TakesTheTwoWordsInAnyCaseAndNumbers) {
  for (const char* text : {"True", "true", "TRUE", "tRuE", " True ", "1", "-1", " 2", "0.5", "1e3", ".1"})
    EXPECT_TRUE(ToBoolean(text)) << "[" << text << "]";
  for (const char* text : {"False", "false", "FALSE", "  False", "0", "-0", "0.0", " 0 ", "0e5", "1e-400"})
    EXPECT_FALSE(ToBoolean(text)) << "[" << text << "]";
}

TEST(ToBoolean, RaisesThirteenForAnythingElse) {
  for (const char* text :
       {"", " ", "Tru", "Truee", "Yes", "on", "1x", "\tTrue", "True\t", "True False", "0x1", "-", "#TRUE#"})
    EXPECT_EQ(RaisedBy([&] { ToBoolean(text); }), 13) << "[" << text << "]";
}

TEST(BooleanText, IsWhatToBooleanReads) {
  EXPECT_STREQ(BooleanText(true), "True");
  EXPECT_STREQ(BooleanText(false), "False");
}

// A level's text as a number, ten times that, as text again, as a 16-bit count.
TEST(TextValueChain, MakesARepeatCountOfALevelText) {
  const auto count = [](const char* level) { return ToInteger(NumberOf(TextOf(NumberOf(level) * 10.0))); };
  const struct {
    const char* level;
    int count;
  } rows[] = {{"0", 0},    {"0.25", 2}, {"0.35", 4},   {"1", 10},   {"2.5", 25}, {"3", 30},
              {"10", 100}, {"50", 500}, {" 50 ", 500}, {"0.05", 0}, {"0.15", 2}, {"3276.7", 32767}};
  for (const auto& row : rows) EXPECT_EQ(count(row.level), row.count) << "level " << row.level;
  EXPECT_EQ(RaisedBy([&] { count("3276.8"); }), 6);
}
