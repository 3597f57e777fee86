// The scheduled list's file: a path a line, nothing else.
#include "shred/list_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace shred;

using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;

TEST(ListFileText, IsEachPathFollowedByCrLf) {
  EXPECT_EQ(ListFileText({"C:\\c.txt", "C:\\a.txt", "C:\\b.txt"}), "C:\\c.txt\r\nC:\\a.txt\r\nC:\\b.txt\r\n");
}

TEST(ListFileText, OfAnEmptyListIsEmpty) { EXPECT_EQ(ListFileText({}), ""); }

TEST(ListFileText, PutsNothingAroundBlanksCommasAndQuotes) {
  EXPECT_EQ(ListFileText({" C:\\my files\\a, b.txt ", "C:\\\"c\"", ""}), " C:\\my files\\a, b.txt \r\nC:\\\"c\"\r\n\r\n");
}

TEST(ReadListFile, GivesBackWhatWasWritten) {
  const Paths paths = {"C:\\c.txt",  "C:\\my files\\a, b.txt", "C:\\a.txt", " leading and trailing ", "C:\\a.txt",
                       "\"quoted\"", "\xE4\xF6\xFC",           "",          "# no comment",           "a\tb"};
  EXPECT_EQ(ReadListFile(ListFileText(paths)), paths);
}

TEST(ReadListFile, FindsNoLineInAnEmptyFile) { EXPECT_THAT(ReadListFile(""), IsEmpty()); }

TEST(ReadListFile, EndsALineAtCrLfAndAtABareLf) {
  EXPECT_THAT(ReadListFile("one\ntwo\r\nthree\n"), ElementsAre("one", "two", "three"));
}

TEST(ReadListFile, TakesALastLineWithoutAnEnd) {
  EXPECT_THAT(ReadListFile("one\r\ntwo"), ElementsAre("one", "two"));
  EXPECT_THAT(ReadListFile("one"), ElementsAre("one"));
}

TEST(ReadListFile, TakesAnEmptyLineAsOne) {
  EXPECT_THAT(ReadListFile("\r\n"), ElementsAre(""));
  EXPECT_THAT(ReadListFile("one\r\n\r\n\ntwo\r\n"), ElementsAre("one", "", "", "two"));
}

TEST(ReadListFile, KeepsACrThatEndsNoLine) {
  EXPECT_THAT(ReadListFile("one\rtwo\r\nthree\r"), ElementsAre("one\rtwo", "three\r"));
  EXPECT_THAT(ReadListFile("one\r\r\n"), ElementsAre("one\r"));
}

TEST(ReadListFile, LeavesNulBytesOut) {
  EXPECT_THAT(ReadListFile(std::string("o\0n\0e\r\n\0\r\nt\0wo\0", 16)), ElementsAre("one", "", "two"));
  EXPECT_THAT(ReadListFile(std::string(3, '\0')), ElementsAre(""));
}

TEST(ReadListFile, ReadsOnBehindTheOldEndOfFileMark) {
  EXPECT_THAT(ReadListFile("one\r\n\x1A\r\ntwo\x1A\r\n"), ElementsAre("one", "\x1A", "two\x1A"));
}

TEST(ReadListFile, TakesAMegabyteOnOneLineAndAHundredThousandLines) {
  const std::string name(1 << 20, 'x');
  EXPECT_THAT(ReadListFile(name + "\r\n"), ElementsAre(name));
  EXPECT_EQ(ReadListFile(ListFileText(Paths(100000, "C:\\file.txt"))), Paths(100000, "C:\\file.txt"));
}
