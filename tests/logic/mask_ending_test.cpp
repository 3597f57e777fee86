#include "cleaners/mask_ending.h"

#include <gtest/gtest.h>

using namespace cleaners;
using namespace platform;

TEST(IsMeantByMask, TakesNamesWithTheMasksEndingInAnyCase) {
  for (const char16_t* name : {u"FILE0000.CHK", u"file0000.chk", u"two.dots.Chk", u".chk"})
    EXPECT_TRUE(IsMeantByMask(name, u"C:\\*.chk")) << testing::PrintToString(name);
}

TEST(IsMeantByMask, LeavesNamesThatTheMaskReachesOnlyThroughTheirShortName) {
  for (const char16_t* name : {u"x.chkdsk", u"a.chkx", u"letter.doc", u"chk", u""})
    EXPECT_FALSE(IsMeantByMask(name, u"C:\\*.chk")) << testing::PrintToString(name);
}

TEST(IsMeantByMask, TakesEveryNameForAMaskWithoutAPlainEnding) {
  for (const char16_t* mask : {u"*", u"C:\\Temp\\*", u"*.*", u"*.ch?", u"C:\\a.b\\*"})
    EXPECT_TRUE(IsMeantByMask(u"any name", mask)) << testing::PrintToString(mask);
}
