#include "platform/wide_text.h"

#include <gtest/gtest.h>

#include "wide_system_for_tests.h"

using namespace platform;

TEST(WideLiteral, IsTheTextWithoutItsNul) {
  EXPECT_EQ(Wide<"a\\b">(), u"a\\b");
  EXPECT_EQ(Wide<"">().size(), 0u);
  EXPECT_EQ(Wide<"a\0b">(), WideView(u"a\0b", 3));
  EXPECT_EQ(*(Wide<"ab">().data() + 2), u'\0');
}

TEST(TrimOfWideTexts, TakesTheBlanksAtBothEndsAway) {
  EXPECT_EQ(Trim(u"  a b "), u"a b");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
  EXPECT_EQ(Trim(u"\ta\u3000"), u"\ta\u3000") << "no other white space";
}

TEST(EqualIgnoringCaseOfWideTexts, LooksPastTheCaseOfEveryLetter) {
  EXPECT_TRUE(EqualIgnoringCase(u"Stra\u00DFe \u00E9\u0142\u0436", u"sTRA\u00DFE \u00C9\u0141\u0416"));
  EXPECT_TRUE(EqualIgnoringCase(u"", u""));
  EXPECT_FALSE(EqualIgnoringCase(u"a", u"ab"));
  EXPECT_FALSE(EqualIgnoringCase(u"\u0141", u"L"));
  EXPECT_TRUE(
      EqualIgnoringCase(u"\xD800"
                        u"a",
                        u"\xD800"
                        u"A"))
      << "half a surrogate pair is as it is";
  EXPECT_FALSE(EqualIgnoringCase(u"\xD800", u"\xD801"));
}
