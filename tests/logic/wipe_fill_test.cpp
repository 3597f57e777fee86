#include "cleaners/wipe_fill.h"

#include <gtest/gtest.h>

using namespace cleaners;

TEST(FillCharacter, IsTheLastCharacterOfTheDecimalText) {
  const struct {
    double clockDays;
    double seconds;
    double random;
    char last;
    const char* sum;
  } rows[] = {
      {38000.0, 3600.0, 0.25, '5', "41599.75"},
      {38000.0, 3600.0, 0.0, '0', "41600"},
      {38000.0, 3600.0, 0.5, '5', "41599.5"},
      {38000.0, 3601.0, 0.0, '1', "41601"},
      {38000.0, 3600.0, 0.125, '5', "41599.875"},
      {38000.0, 3600.0, 0.9, '1', "41599.1"},
      {38000.0, 86399.0, 0.3, '7', "124398.7"},
      // Only whole days of the clock count.
      {38000.75, 3600.0, 0.0, '0', "41600"},
      {38000.999, 3603.0, 0.0, '3', "41603"},
      // Fifteen digits at most.
      {38000.0, 3600.0, 1.0 / 3.0, '7', "41599.6666666667"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(FillCharacter(row.clockDays, row.seconds, row.random), row.last) << "of the text " << row.sum;
}

TEST(MakeFillBlocks, HoldsEachCharacterOneThousandAndTwentyFourTimes) {
  const FillBlocks blocks = MakeFillBlocks('3', '8');
  EXPECT_EQ(blocks.a, std::string(1024, '3'));
  EXPECT_EQ(blocks.b, std::string(1024, '8'));
}
