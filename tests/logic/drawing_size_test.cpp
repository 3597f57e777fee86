#include "platform/drawing_size.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(DrawingSize, IsTheLargestThatFitsTheScreen) {
  constexpr struct {
    int dpi, steps;
  } kRows[] = {{0, 0}, {72, 0}, {96, 0}, {119, 0}, {120, 1}, {143, 1}, {144, 2}, {168, 2}, {191, 2}, {192, 3}, {288, 3}};
  for (const auto& row : kRows) EXPECT_EQ(DrawingSteps(row.dpi), row.steps) << row.dpi;
}
