#include "automation/boss_key.h"

#include <gtest/gtest.h>

#include <limits>

using namespace automation;

TEST(BossKeyName, NamesTheTwelveFunctionKeys) {
  const char* names[] = {"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12"};
  for (std::int32_t code = 112; code <= 123; ++code) EXPECT_EQ(BossKeyName(code), names[code - 112]) << "code " << code;
}

TEST(BossKeyName, IsF10ForAnyOtherCode) {
  for (const std::int32_t code : {0, -1, 1, 65, 111, 124, 135, 32767, std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()})
    EXPECT_EQ(BossKeyName(code), "F10") << "code " << code;
}

TEST(BossKeyCodeOf, FindsTheTwelveFunctionKeys) {
  const char* names[] = {"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12"};
  for (std::int32_t code = 112; code <= 123; ++code) EXPECT_EQ(BossKeyCodeOf(names[code - 112]), code);
}

TEST(BossKeyCodeOf, LeavesBlanksAroundTheNameOut) {
  for (const char* name : {" F5", "F5 ", "   F5   "}) EXPECT_EQ(BossKeyCodeOf(name), 116) << "[" << name << "]";
}

TEST(BossKeyCodeOf, IsThatOfF10ForAnyOtherText) {
  for (const char* text : {"", " ", "f5", "F", "F0", "F13", "F05", "F 5", "F5x", "xF5", "F5 F6", "\tF5", "F5\n", "112",
                           "116", "Escape", "\xC6"})
    EXPECT_EQ(BossKeyCodeOf(text), 121) << "[" << text << "]";
}

TEST(BossKeyCodeOf, FindsTheCodeOfEveryNameThatIsShown) {
  for (std::int32_t code = 112; code <= 123; ++code) EXPECT_EQ(BossKeyCodeOf(BossKeyName(code)), code);
}
