#include "automation/boss_key.h"

#include <gtest/gtest.h>

TEST(BossKeyName, IsTheFunctionKeyOfItsCode) {
  for (int key = 1; key <= 12; ++key) EXPECT_EQ(BossKeyName(111 + key), "F" + std::to_string(key));
}

TEST(BossKeyName, IsF10ForACodeThatIsNoFunctionKey) {
  for (const int code : {0, 111, 124, -1, 2147483647}) EXPECT_EQ(BossKeyName(code), "F10") << code;
}
