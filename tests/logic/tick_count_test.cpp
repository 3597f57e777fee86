#include "platform/tick_count.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

struct Row {
  std::uint32_t now;
  std::uint32_t end;
  std::int32_t left;
};

const Row kRows[] = {
    {0, 0, 0},
    {1000, 2000, 1000},
    {2000, 2000, 0},
    {2001, 2000, -1},
    {5000, 2000, -3000},
    // Across the wrap.
    {0xFFFFFE0Cu, 0x000001F4u, 1000},
    {0xFFFFFFFFu, 0u, 1},
    {0u, 0xFFFFFFFFu, -1},
    {0x000001F4u, 0xFFFFFE0Cu, -1000},
    // Where the sign of the plain numbers changes.
    {0x7FFFFF00u, 0x80000100u, 512},
    {0x80000100u, 0x7FFFFF00u, -512},
    // Just below 24 days.
    {100, 100 + 2073600000u - 1000u, 2073599000},
};

}  // namespace

TEST(MillisecondsUntil, CountsDownToTheEndAlsoAcrossTheWrap) {
  for (const auto& [now, end, left] : kRows) EXPECT_EQ(MillisecondsUntil(end, now), left) << "from " << now << " to " << end;
}

TEST(MillisecondsUntil, EndsAWaitOfOneSecondWhereverTheCountStands) {
  for (const std::uint32_t start : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFC17u, 0xFFFFFC18u, 0xFFFFFFFFu}) {
    const std::uint32_t end = start + 1000u;
    EXPECT_GT(MillisecondsUntil(end, start), 0) << "begun at " << start;
    EXPECT_GT(MillisecondsUntil(end, start + 999u), 0) << "begun at " << start;
    EXPECT_LE(MillisecondsUntil(end, start + 1000u), 0) << "begun at " << start;
    EXPECT_LE(MillisecondsUntil(end, start + 60000u), 0) << "begun at " << start;
  }
}
