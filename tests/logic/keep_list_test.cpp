// The cookies to keep: their file's text, and which of the current cookies it takes out of sight.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cookies/keep_list.h"
#include "wide_system_for_tests.h"

using namespace cookies;
using namespace platform;

using testing::ElementsAre;
using testing::IsEmpty;

TEST(KeepListText, IsOneLineANameInTheirOrder) {
  EXPECT_EQ(KeepListText({u"user@b[1].txt", u"user@a[2].txt"}), "user@b[1].txt\r\nuser@a[2].txt\r\n");
  EXPECT_EQ(KeepListText({}), "");
}

TEST(ReadKeepList, GivesBackWhatWasWritten) {
  const CookieNames names = {u"user@site[1].txt", u" blank at the front", u"blank at the end ", u"a \"quoted\" word",
                             u"\u00E4\u00F6"};
  EXPECT_EQ(ReadKeepList(KeepListText(names)), names);
}

TEST(ReadKeepList, GivesANameWithACommaBackAsTwo) {
  EXPECT_THAT(ReadKeepList(KeepListText({u"user@a,b.txt", u"c"})), ElementsAre(u"user@a", u"b.txt", u"c"));
}

TEST(ReadKeepList, DropsTheQuotesAroundAFieldAndKeepsACommaBetweenThem) {
  EXPECT_THAT(ReadKeepList("\"one\"\r\n\"two,three\",four\r\n"), ElementsAre(u"one", u"two,three", u"four"));
  EXPECT_THAT(ReadKeepList(" \"one\" ,two"), ElementsAre(u"one", u"two"));
  EXPECT_THAT(ReadKeepList("\"\"\r\n"), ElementsAre(u""));
}

TEST(ReadKeepList, TakesAQuoteThatIsNotClosedOnItsLineAsACharacter) {
  EXPECT_THAT(ReadKeepList("\"one\r\ntwo\"\r\nthree"), ElementsAre(u"\"one", u"two\"", u"three"));
  EXPECT_THAT(ReadKeepList("\"one\"more,two"), ElementsAre(u"\"one\"more", u"two"));
  EXPECT_THAT(ReadKeepList("\""), ElementsAre(u"\""));
}

TEST(ReadKeepList, EndsALineAtCrLfAtCrAndAtLf) {
  EXPECT_THAT(ReadKeepList("one\r\ntwo\nthree\rfour"), ElementsAre(u"one", u"two", u"three", u"four"));
}

TEST(ReadKeepList, TakesAnEmptyLineForAnEmptyField) {
  EXPECT_THAT(ReadKeepList("one\r\n\r\n,two"), ElementsAre(u"one", u"", u"", u"two"));
  EXPECT_THAT(ReadKeepList("\r\n"), ElementsAre(u""));
}

TEST(ReadKeepList, FindsNothingBehindTheLastFieldEnd) {
  EXPECT_THAT(ReadKeepList(""), IsEmpty());
  EXPECT_THAT(ReadKeepList("one"), ElementsAre(u"one"));
  EXPECT_THAT(ReadKeepList("one,"), ElementsAre(u"one"));
  EXPECT_THAT(ReadKeepList("one\r\n"), ElementsAre(u"one"));
}

TEST(ReadKeepList, LeavesNulBytesOut) {
  const std::string wide("o\0n\0e\0\r\0\n\0t\0w\0o\0", 16);
  EXPECT_THAT(ReadKeepList(wide), ElementsAre(u"one", u"two"));
  EXPECT_THAT(ReadKeepList(std::string(3, '\0')), IsEmpty());
}

TEST(ReadKeepList, TakesAMegabyteOnOneLine) {
  const std::string name(1 << 20, 'x');
  EXPECT_THAT(ReadKeepList(name), ElementsAre(Widen(name)));
}

TEST(ReadKeepList, TakesAMegabyteOfQuotesOnOneLineInNoTime) {
  std::string closed, open;
  for (int field = 0; field < 1 << 18; ++field) closed += "\"a\",", open += "\"a,";
  EXPECT_EQ(ReadKeepList(closed), CookieNames(1 << 18, u"a"));
  EXPECT_EQ(ReadKeepList(open), CookieNames(1 << 18, u"\"a"));
}

TEST(IsSameCookie, LooksAtNeitherCaseNorBlanksAroundTheName) {
  EXPECT_TRUE(IsSameCookie(u"\u00E9\u0142\u0436", u" \u00C9\u0141\u0416"));
  EXPECT_TRUE(IsSameCookie(u"  USER@SITE[1].TXT ", u"user@site[1].txt"));
  EXPECT_TRUE(IsSameCookie(u"", u"  "));
  EXPECT_FALSE(IsSameCookie(u"user@site[1].txt", u"user@site[2].txt"));
  EXPECT_FALSE(IsSameCookie(u"user @site", u"user@site"));
}

TEST(PutKeptFirst, PutsTheKeptCookiesInTheOrderOfTheirList) {
  CookieNames current = {u"c", u"a", u"d", u"b"};
  EXPECT_EQ(PutKeptFirst(current, {u"B", u"gone", u" a"}), 2u);
  EXPECT_THAT(current, ElementsAre(u"b", u"a", u"c", u"d"));
  EXPECT_EQ(PutKeptFirst(current, {}), 0u);
  EXPECT_THAT(current, ElementsAre(u"b", u"a", u"c", u"d"));
  CookieNames none;
  EXPECT_EQ(PutKeptFirst(none, {u"a"}), 0u);
}

TEST(PutKeptFirst, LetsEachLineTakeOneCookie) {
  CookieNames once = {u"x", u"a"};
  EXPECT_EQ(PutKeptFirst(once, {u"a", u"A"}), 1u);
  EXPECT_THAT(once, ElementsAre(u"a", u"x"));
  CookieNames twice = {u"x", u"a", u"A"};
  EXPECT_EQ(PutKeptFirst(twice, {u"a"}), 1u);
  EXPECT_THAT(twice, ElementsAre(u"a", u"x", u"A"));
}

TEST(ReadKeepList, EndsNoFieldInTheMiddleOfALetterOfTwoBytes) {
  const OtherSystem farEast(CodePage::kDoubleByte);
  const CookieNames names = {u"user@" + Widen("\x8F\x5C\x93\x7E") + u"[1].txt", Widen("\x8F\x5C")};
  EXPECT_EQ(KeepListText(names), "user@\x8F\x5C\x93\x7E[1].txt\r\n\x8F\x5C\r\n");
  EXPECT_EQ(ReadKeepList(KeepListText(names)), names);
}
