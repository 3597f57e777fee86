// The scheduled list's file: a path a line, nothing else; in the ANSI code page unless a name is outside of it.
#include "shred/list_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wide_system_for_tests.h"

using namespace platform;
using namespace shred;

using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<WideText>;

namespace {

const std::string kMark = "\xEF\xBB\xBF";

}  // namespace

TEST(ListFileText, IsEachPathFollowedByCrLf) {
  EXPECT_EQ(ListFileText({u"C:\\c.txt", u"C:\\a.txt", u"C:\\b.txt"}), "C:\\c.txt\r\nC:\\a.txt\r\nC:\\b.txt\r\n");
}

TEST(ListFileText, OfAnEmptyListIsEmpty) { EXPECT_EQ(ListFileText({}), ""); }

TEST(ListFileText, PutsNothingAroundBlanksCommasAndQuotes) {
  EXPECT_EQ(ListFileText({u" C:\\my files\\a, b.txt ", u"C:\\\"c\"", u""}), " C:\\my files\\a, b.txt \r\nC:\\\"c\"\r\n\r\n");
}

TEST(ListFileText, IsInTheCodePageWhereThatHasEveryCharacter) {
  EXPECT_EQ(ListFileText({u"C:\\\u00E4.txt", u"C:\\b"}), "C:\\\xE4.txt\r\nC:\\b\r\n");
  const OtherSystem farEast(CodePage::kDoubleByte);
  EXPECT_EQ(ListFileText({u"C:\\" + Widen("\x8F\x5C") + u"\\a"}), "C:\\\x8F\x5C\\a\r\n");
}

TEST(ListFileText, IsInUtf8WithItsMarkWhereTheCodePageLacksACharacter) {
  EXPECT_EQ(ListFileText({u"C:\\a.txt", u"C:\\\u0141.txt", u"C:\\\u00E4\u8868\U0001F600"}),
            kMark + "C:\\a.txt\r\nC:\\\xC5\x81.txt\r\nC:\\\xC3\xA4\xE8\xA1\xA8\xF0\x9F\x98\x80\r\n");
  const OtherSystem farEast(CodePage::kDoubleByte);
  EXPECT_EQ(ListFileText({u"\u00E4"}), kMark + "\xC3\xA4\r\n");
}

TEST(ListFileText, KeepsHalfASurrogatePair) {
  EXPECT_EQ(ListFileText({u"\xD83D.\xDE00"}), kMark + "\xED\xA0\xBD.\xED\xB8\x80\r\n");
}

TEST(ListFileText, IsNotTakenForUtf8WhenItBeginsWithTheBytesOfTheMark) {
  EXPECT_EQ(ReadListFile(ListFileText({u"\u00EF\u00BB\u00BFa"})), Lines{u"\u00EF\u00BB\u00BFa"});
}

TEST(ReadListFile, GivesBackWhatWasWritten) {
  Lines lines = {u"C:\\c.txt",  u"C:\\my files\\a, b.txt", u"C:\\a.txt", u" leading and trailing ", u"C:\\a.txt",
                 u"\"quoted\"", u"\u00E4\u00F6\u00FC",     u"",          u"# no comment",           u"a\tb"};
  EXPECT_EQ(ReadListFile(ListFileText(lines)), lines);
  lines.push_back(u"C:\\\u0141\u8868\U0001F600\U0010FFFF\uFFFF\uFEFF\xD83D\xDBFF\xDC00\xDFFF\u0080\u07FF\u0800");
  EXPECT_EQ(ReadListFile(ListFileText(lines)), lines);
}

TEST(ReadListFile, ReadsAFileWithoutTheMarkInTheCodePage) {
  EXPECT_THAT(ReadListFile("C:\\\xE4\r\n"), ElementsAre(u"C:\\\u00E4"));
  const OtherSystem farEast(CodePage::kDoubleByte);
  EXPECT_EQ(ReadListFile("C:\\\x8F\x5C\r\n\x8F\x5C"), (Lines{u"C:\\" + Widen("\x8F\x5C"), Widen("\x8F\x5C")}));
}

TEST(ReadListFile, ReadsAFileWithTheMarkAsUtf8WhateverTheCodePage) {
  for (const CodePage page : {CodePage::kSingleByte, CodePage::kDoubleByte}) {
    const OtherSystem system(page);
    EXPECT_THAT(ReadListFile(kMark + "C:\\\xC5\x81\r\n" + kMark), ElementsAre(u"C:\\\u0141", u"\uFEFF"));
    EXPECT_THAT(ReadListFile(kMark), IsEmpty());
  }
}

// Nothing that this program writes. Such a line shows that something is wrong with it and leads nowhere.
TEST(ReadListFile, PutsAMarkInThePlaceOfBytesThatAreNoUtf8) {
  const struct {
    const char* bytes;
    const char16_t* line;
  } rows[] = {
      {"a\x80z", u"a\uFFFDz"},
      {"\xC5", u"\uFFFD"},
      {"\xC5z", u"\uFFFDz"},
      {"\xE8\xA1z", u"\uFFFD\uFFFDz"},
      {"\xC1\x9C", u"\uFFFD\uFFFD"},            // "\" in two bytes
      {"\xE0\x81\x9C", u"\uFFFD\uFFFD\uFFFD"},  // and in three
      {"\xC0\x80", u"\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF8\x88\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xFF\xFE", u"\uFFFD\uFFFD"},
      {"\xED\xA0\xBD\xED\xB8\x80", u"\U0001F600"},  // a pair in two halves
  };
  for (const auto& row : rows) EXPECT_THAT(ReadListFile(kMark + row.bytes), ElementsAre(row.line));
}

TEST(ReadListFile, FindsNoLineInAnEmptyFile) { EXPECT_THAT(ReadListFile(""), IsEmpty()); }

TEST(ReadListFile, EndsALineAtCrLfAndAtABareLf) {
  for (const std::string& mark : {std::string(), kMark})
    EXPECT_THAT(ReadListFile(mark + "one\ntwo\r\nthree\n"), ElementsAre(u"one", u"two", u"three"));
}

TEST(ReadListFile, TakesALastLineWithoutAnEnd) {
  EXPECT_THAT(ReadListFile("one\r\ntwo"), ElementsAre(u"one", u"two"));
  EXPECT_THAT(ReadListFile("one"), ElementsAre(u"one"));
}

TEST(ReadListFile, TakesAnEmptyLineAsOne) {
  EXPECT_THAT(ReadListFile("\r\n"), ElementsAre(u""));
  EXPECT_THAT(ReadListFile("one\r\n\r\n\ntwo\r\n"), ElementsAre(u"one", u"", u"", u"two"));
}

TEST(ReadListFile, KeepsACrThatEndsNoLine) {
  EXPECT_THAT(ReadListFile("one\rtwo\r\nthree\r"), ElementsAre(u"one\rtwo", u"three\r"));
  EXPECT_THAT(ReadListFile("one\r\r\n"), ElementsAre(u"one\r"));
}

TEST(ReadListFile, LeavesNulBytesOut) {
  EXPECT_THAT(ReadListFile(std::string("o\0n\0e\r\n\0\r\nt\0wo\0", 16)), ElementsAre(u"one", u"", u"two"));
  EXPECT_THAT(ReadListFile(std::string(3, '\0')), ElementsAre(u""));
}

TEST(ReadListFile, ReadsOnAfterTheOldEndOfFileMark) {
  EXPECT_THAT(ReadListFile("one\r\n\x1A\r\ntwo\x1A\r\n"), ElementsAre(u"one", u"\x1A", u"two\x1A"));
}

TEST(ReadListFile, TakesAMegabyteOnOneLineAndAHundredThousandLines) {
  EXPECT_THAT(ReadListFile(std::string(1 << 20, 'x') + "\r\n"), ElementsAre(WideText(1 << 20, u'x')));
  EXPECT_EQ(ReadListFile(ListFileText(Lines(100000, u"C:\\file.txt"))), Lines(100000, u"C:\\file.txt"));
}
