#include "cleaners/mask_ending.h"

#include <gtest/gtest.h>

using namespace cleaners;

TEST(IsMeantByMask, TakesNamesWithTheMasksEndingInAnyCase) {
  for (const char* name : {"FILE0000.CHK", "file0000.chk", "two.dots.Chk", ".chk"})
    EXPECT_TRUE(IsMeantByMask(name, "C:\\*.chk")) << name;
}

TEST(IsMeantByMask, LeavesNamesThatTheMaskReachesOnlyThroughTheirShortName) {
  for (const char* name : {"x.chkdsk", "a.chkx", "letter.doc", "chk", ""})
    EXPECT_FALSE(IsMeantByMask(name, "C:\\*.chk")) << name;
}

TEST(IsMeantByMask, TakesEveryNameForAMaskWithoutAPlainEnding) {
  for (const char* mask : {"*", "C:\\Temp\\*", "*.*", "*.ch?", "C:\\a.b\\*"})
    EXPECT_TRUE(IsMeantByMask("any name", mask)) << mask;
}
