// The cookies to keep: their file's text, and which of the current cookies it takes out of sight.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cookies/keep_list.h"

using namespace cookies;

using testing::ElementsAre;
using testing::IsEmpty;

TEST(KeepListText, IsOneLineANameInTheirOrder) {
  EXPECT_EQ(KeepListText({"user@b[1].txt", "user@a[2].txt"}), "user@b[1].txt\r\nuser@a[2].txt\r\n");
  EXPECT_EQ(KeepListText({}), "");
}

TEST(ReadKeepList, GivesBackWhatWasWritten) {
  const CookieNames names = {"user@site[1].txt", " blank at the front", "blank behind ", "a \"quoted\" word", "\xE4\xF6"};
  EXPECT_EQ(ReadKeepList(KeepListText(names)), names);
}

TEST(ReadKeepList, GivesANameWithACommaBackAsTwo) {
  EXPECT_THAT(ReadKeepList(KeepListText({"user@a,b.txt", "c"})), ElementsAre("user@a", "b.txt", "c"));
}

TEST(ReadKeepList, DropsTheQuotesAroundAFieldAndKeepsACommaBetweenThem) {
  EXPECT_THAT(ReadKeepList("\"one\"\r\n\"two,three\",four\r\n"), ElementsAre("one", "two,three", "four"));
  EXPECT_THAT(ReadKeepList(" \"one\" ,two"), ElementsAre("one", "two"));
  EXPECT_THAT(ReadKeepList("\"\"\r\n"), ElementsAre(""));
}

TEST(ReadKeepList, TakesAQuoteThatIsNotClosedOnItsLineAsACharacter) {
  EXPECT_THAT(ReadKeepList("\"one\r\ntwo\"\r\nthree"), ElementsAre("\"one", "two\"", "three"));
  EXPECT_THAT(ReadKeepList("\"one\"more,two"), ElementsAre("\"one\"more", "two"));
  EXPECT_THAT(ReadKeepList("\""), ElementsAre("\""));
}

TEST(ReadKeepList, EndsALineAtCrLfAtCrAndAtLf) {
  EXPECT_THAT(ReadKeepList("one\r\ntwo\nthree\rfour"), ElementsAre("one", "two", "three", "four"));
}

TEST(ReadKeepList, TakesAnEmptyLineForAnEmptyField) {
  EXPECT_THAT(ReadKeepList("one\r\n\r\n,two"), ElementsAre("one", "", "", "two"));
  EXPECT_THAT(ReadKeepList("\r\n"), ElementsAre(""));
}

TEST(ReadKeepList, FindsNothingBehindTheLastFieldEnd) {
  EXPECT_THAT(ReadKeepList(""), IsEmpty());
  EXPECT_THAT(ReadKeepList("one"), ElementsAre("one"));
  EXPECT_THAT(ReadKeepList("one,"), ElementsAre("one"));
  EXPECT_THAT(ReadKeepList("one\r\n"), ElementsAre("one"));
}

TEST(ReadKeepList, LeavesNulBytesOut) {
  const std::string wide("o\0n\0e\0\r\0\n\0t\0w\0o\0", 16);
  EXPECT_THAT(ReadKeepList(wide), ElementsAre("one", "two"));
  EXPECT_THAT(ReadKeepList(std::string(3, '\0')), IsEmpty());
}

TEST(ReadKeepList, TakesAMegabyteOnOneLine) {
  const std::string name(1 << 20, 'x');
  EXPECT_THAT(ReadKeepList(name), ElementsAre(name));
}

TEST(ReadKeepList, TakesAMegabyteOfQuotesOnOneLineInNoTime) {
  std::string closed, open;
  for (int field = 0; field < 1 << 18; ++field) closed += "\"a\",", open += "\"a,";
  EXPECT_EQ(ReadKeepList(closed), CookieNames(1 << 18, "a"));
  EXPECT_EQ(ReadKeepList(open), CookieNames(1 << 18, "\"a"));
}

TEST(IsSameCookie, LooksAtNeitherCaseNorBlanksAroundTheName) {
  EXPECT_TRUE(IsSameCookie("  USER@SITE[1].TXT ", "user@site[1].txt"));
  EXPECT_TRUE(IsSameCookie("", "  "));
  EXPECT_FALSE(IsSameCookie("user@site[1].txt", "user@site[2].txt"));
  EXPECT_FALSE(IsSameCookie("user @site", "user@site"));
}

TEST(WithoutKept, LeavesTheCookiesThatAreNotKeptInTheirOrder) {
  EXPECT_THAT(WithoutKept({"c", "a", "b"}, {"A "}), ElementsAre("c", "b"));
  EXPECT_THAT(WithoutKept({"c", "a"}, {}), ElementsAre("c", "a"));
}

TEST(WithoutKept, DoesNotMindAKeptCookieThatIsGone) { EXPECT_THAT(WithoutKept({"a"}, {"gone", "a"}), IsEmpty()); }

TEST(WithoutKept, TakesOneLineAwayForEachKeptLine) {
  EXPECT_THAT(WithoutKept({"a", "A", "a"}, {"a"}), ElementsAre("A", "a"));
  EXPECT_THAT(WithoutKept({"a", "A", "a"}, {"a", "a"}), ElementsAre("a"));
}
