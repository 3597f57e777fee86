#include "shred/overwrite_sequence.h"

#include <gtest/gtest.h>

#include "expected_overwrite.h"
#include "raised.h"

using namespace platform;
using namespace shred;

namespace {

std::string BytesOf(const OverwriteRuns& runs) {
  std::string bytes;
  for (const OverwriteRun& run : runs)
    for (int i = 0; i < run.count; ++i) bytes += run.item;
  return bytes;
}

std::string BytesAtLevel(const char* level) { return BytesOf(OverwriteSequence(RepeatCount(level))); }

}  // namespace

TEST(RepeatCount, IsTenTimesTheLevelWithHalvesToTheEvenNeighbour) {
  const struct {
    const char* level;
    int count;
  } rows[] = {
      {"0", 0},          {"1", 10},          {"2.5", 25},  {"3", 30},     {"10", 100},   {"50", 500},
      {"0.05", 0},       {"0.15", 2},        {"0.25", 2},  {"0.35", 4},   {"0.45", 4},   {"0.55", 6},
      {"0.04", 0},       {"0.06", 1},        {"0.249", 2}, {"0.251", 3},  {"1.15", 12},  {"1.25", 12},
      {"0.1", 1},        {"0.3", 3},         {"0.7", 7},   {"1.1", 11},   {"3.333", 33}, {"1e3", 10000},
      {"1e-1", 1},       {".5", 5},          {"5.", 50},   {"+5", 50},    {" 5 ", 50},   {"007", 70},
      {"3276.7", 32767}, {"3276.74", 32767}, {"-0.05", 0}, {"-0.15", -2}, {"-1", -10},   {"-3276.85", -32768},
  };
  for (const auto& row : rows) EXPECT_EQ(RepeatCount(row.level), row.count) << "level [" << row.level << "]";
}

// 2.0500000000000003 * 10.0 is a little more than 20.5 and would be 21.
TEST(RepeatCount, RoundsTheTextOfTheProductAndNotTheProduct) {
  EXPECT_EQ(RepeatCount("2.0500000000000003"), 20);
  EXPECT_EQ(RepeatCount("0.2500000000000001"), 2);
}

TEST(RepeatCount, RaisesThirteenForATextThatIsNoNumber) {
  for (const char* level :
       {"", " ", "abc", "0,5", "1.5.2", "5 %", "1e", "--1", "&H10", "0x10", "5\t", "50 times", "True", "inf", "nan", "\xBD"})
    EXPECT_EQ(RaisedBy([&] { RepeatCount(level); }), 13) << "level [" << level << "]";
}

TEST(RepeatCount, RaisesSixBeyondSixteenBits) {
  for (const char* level : {"3276.8", "3276.75", "3277", "-3276.86", "-3277", "1e4", "65536", "1e15", "1e300", "1e308",
                            "-1e308", "1.79769313486231e307", "1.7976931348623157e307", "1e400"})
    EXPECT_EQ(RaisedBy([&] { RepeatCount(level); }), 6) << "level [" << level << "]";
}

TEST(OverwriteSequence, HasThirtyRunsInTheirOrder) {
  const std::string ten("\x0A\0\0\0", 4);
  const struct {
    std::string item;
    int count;
  } rows[] = {
      {ten, 7},    {"\xEA\xDE", 7}, {"1\xE7", 7}, {"10", 7}, {"10", 7},  {"10", 7},
      {"10", 7},   {"10", 7},       {"10", 7},    {"10", 7}, {"10", 7},  {"10", 7},
      {"10", 7},   {".", 7},        {".", 7},     {"V", 7},  {"e", 7},   {"r", 7},
      {"\x97", 7}, {"1", 7},        {".", 7},     {"0", 7},  {".", 7},   {"0", 7},
      {ten, 7},    {ten, 7},        {ten, 7},     {ten, 10}, {ten, 100}, {std::string(1, '\0'), 7},
  };
  const OverwriteRuns runs = OverwriteSequence(7);
  ASSERT_EQ(runs.size(), std::size(rows));
  for (std::size_t i = 0; i < runs.size(); ++i) {
    EXPECT_EQ(runs[i].item, rows[i].item) << "run " << i + 1;
    EXPECT_EQ(runs[i].count, rows[i].count) << "run " << i + 1;
  }
}

TEST(OverwriteSequence, IsTheSameByteForByteAtEveryLevel) {
  const struct {
    const char* level;
    int count;
    std::size_t bytes;
  } rows[] = {{"0", 0, 440},      {"0.1", 1, 492},      {"0.25", 2, 544},          {"0.35", 4, 648},
              {"1", 10, 960},     {"2.5", 25, 1740},    {"3", 30, 2000},           {"10", 100, 5640},
              {"50", 500, 26440}, {"100", 1000, 52440}, {"3276.7", 32767, 1704324}};
  for (const auto& row : rows) {
    const std::string bytes = BytesAtLevel(row.level);
    EXPECT_EQ(bytes.size(), row.bytes) << "level " << row.level;
    EXPECT_EQ(bytes.size(), 52u * row.count + 440u) << "level " << row.level;
    EXPECT_TRUE(bytes == ExpectedOverwrite(row.count)) << "level " << row.level;
  }
}

TEST(OverwriteSequence, GrowsByFiftyTwoBytesARepeat) {
  for (std::int16_t n = 0; n <= 1000; ++n) ASSERT_EQ(BytesOf(OverwriteSequence(n)).size(), 52u * n + 440u) << n;
}

TEST(OverwriteSequence, WritesOnlyItsTwoFixedRunsAtLevelZeroAndBelow) {
  for (const char* level : {"0", "0.05", "-0.05", "-1", "-3276.8"})
    EXPECT_EQ(BytesAtLevel(level), Times(110, std::string("\x0A\0\0\0", 4))) << "level " << level;
}
