#include "automation/boss_key.h"

#include <gtest/gtest.h>

#include <limits>

TEST(BossKeyName, NamesTheTwelveFunctionKeys) {
  const char* names[] = {"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12"};
  for (std::int32_t code = 112; code <= 123; ++code) EXPECT_EQ(BossKeyName(code), names[code - 112]) << "code " << code;
}

TEST(BossKeyName, IsF10ForAnyOtherCode) {
  for (const std::int32_t code : {0, -1, 1, 65, 111, 124, 135, 32767, std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()})
    EXPECT_EQ(BossKeyName(code), "F10") << "code " << code;
}
