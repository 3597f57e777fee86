// What the file-open dialog leaves in its buffer, as full paths.
#include "shred/dialog_answer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shown.h"

using namespace platform;
using namespace shred;

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_view_literals;

namespace {

std::vector<WideText> Split(WideView answer) { return Shown(SplitDialogAnswer(answer)); }

}  // namespace

TEST(SplitDialogAnswer, GivesTheOnePathOfASingleSelection) {
  EXPECT_THAT(Split(u"C:\\work\\one.txt\0\0"sv), ElementsAre(u"C:\\work\\one.txt"));
}

TEST(SplitDialogAnswer, PutsTheFolderBeforeEachNameOfSeveral) {
  EXPECT_THAT(Split(u"C:\\work\0one.txt\0two.txt\0three.txt\0\0"sv),
              ElementsAre(u"C:\\work\\one.txt", u"C:\\work\\two.txt", u"C:\\work\\three.txt"));
}

TEST(SplitDialogAnswer, DoesNotDoubleTheBackslashOfARoot) {
  EXPECT_THAT(Split(u"C:\\\0one.txt\0two.txt\0\0"sv), ElementsAre(u"C:\\one.txt", u"C:\\two.txt"));
}

TEST(SplitDialogAnswer, TakesAFolderOnTheNetwork) {
  EXPECT_THAT(Split(u"\\\\server\\share\0one.txt\0two.txt\0\0"sv),
              ElementsAre(u"\\\\server\\share\\one.txt", u"\\\\server\\share\\two.txt"));
}

TEST(SplitDialogAnswer, PutsTheFolderBeforeASingleNameThatStandsApart) {
  EXPECT_THAT(Split(u"C:\\work\0one.txt\0\0"sv), ElementsAre(u"C:\\work\\one.txt"));
}

TEST(SplitDialogAnswer, SplitsAtNulAloneAndNotAtBlanksCommasQuotesOrSemicolons) {
  EXPECT_THAT(Split(u"C:\\my work, old\0one two.txt\0a,b;c.txt\0 'd' \0\0"sv),
              ElementsAre(u"C:\\my work, old\\one two.txt", u"C:\\my work, old\\a,b;c.txt", u"C:\\my work, old\\ 'd' "));
  EXPECT_THAT(Split(u"C:\\my work, old\\one two.txt\0\0"sv), ElementsAre(u"C:\\my work, old\\one two.txt"));
}

TEST(SplitDialogAnswer, KeepsTheOrderAndNamesThatComeTwice) {
  EXPECT_THAT(Split(u"C:\\w\0b\0a\0b\0\0"sv), ElementsAre(u"C:\\w\\b", u"C:\\w\\a", u"C:\\w\\b"));
}

TEST(SplitDialogAnswer, KeepsEveryCharacterOfAName) {
  EXPECT_THAT(Split(u"C:\\w\0\u00E4\u5341.txt\0\xD83D\0x. \0\0"sv),
              ElementsAre(u"C:\\w\\\u00E4\u5341.txt", u"C:\\w\\\xD83D", u"C:\\w\\x. "));
}

TEST(SplitDialogAnswer, SplitsWideCharactersLikewise) {
  EXPECT_THAT(Split(u"C:\\Папка\0файл.txt\0two.txt\0\0old\0"sv), ElementsAre(u"C:\\Папка\\файл.txt", u"C:\\Папка\\two.txt"));
  EXPECT_THAT(Split(u"C:\\Папка\\файл.txt\0\0"sv), ElementsAre(u"C:\\Папка\\файл.txt"));
  EXPECT_TRUE(IsWholeAnswer(u"C:\\Папка\0файл\0\0"sv));
  EXPECT_FALSE(IsWholeAnswer(u"C:\\Папка\0файл\0"sv));
}

// Names that a user has typed in quotes.
TEST(SplitDialogAnswer, TakesATypedFullNameAsItIs) {
  EXPECT_THAT(Split(u"C:\\Q\0C:\\w\\a.txt\0C:/w/b.txt\0\\\\server\\share\\c\0d.txt\0\0"sv),
              ElementsAre(u"C:\\w\\a.txt", u"C:\\w\\b.txt", u"\\\\server\\share\\c", u"C:\\Q\\d.txt"));
}

TEST(SplitDialogAnswer, ResolvesATypedPathInTheFolder) {
  EXPECT_THAT(Split(u"C:\\Q\\R\0..\\a.txt\0sub/b.txt\0.\\c.txt\0\0"sv),
              ElementsAre(u"C:\\Q\\a.txt", u"C:\\Q\\R\\sub\\b.txt", u"C:\\Q\\R\\c.txt"));
}

TEST(SplitDialogAnswer, LeavesOutWhatLeadsToNoFile) {
  EXPECT_THAT(Split(u"C:\\w\0a.txt\0b\\\0C:\\c/\0*.txt\0d?\0e:f\0C:g\0\\h\0\\\\.\\C:\0x\\...\0i.txt\0\0"sv),
              ElementsAre(u"C:\\w\\a.txt", u"C:\\w\\i.txt"));
  EXPECT_THAT(Split(u"a.txt\0\0"sv), IsEmpty());
  EXPECT_THAT(Split(u"w\0a.txt\0b.txt\0\0"sv), IsEmpty()) << "a folder that is none";
}

TEST(SplitDialogAnswer, FindsNothingInAnEmptyBuffer) {
  EXPECT_THAT(Split(WideView()), IsEmpty());
  EXPECT_THAT(Split(WideText(2048, u'\0')), IsEmpty());
}

TEST(SplitDialogAnswer, DoesNotLookAfterTheEndOfTheAnswer) {
  EXPECT_THAT(Split(u"C:\\w\\one.txt\0\0C:\\old\\answer.txt\0more\0"sv), ElementsAre(u"C:\\w\\one.txt"));
  EXPECT_THAT(Split(u"C:\\w\0one\0two\0\0three\0\0"sv), ElementsAre(u"C:\\w\\one", u"C:\\w\\two"));
  EXPECT_THAT(Split(u"\0C:\\old\\answer.txt\0"sv), IsEmpty());
}

TEST(SplitDialogAnswer, StaysInABufferThatIsFullToItsEnd) {
  WideText path = u"C:";
  for (int name = 0; name < 100; ++name) path += u"\\" + WideText(19, u'x');
  EXPECT_THAT(Split(path), ElementsAre(path));
  EXPECT_THAT(Split(u"C:\\w\0one\0two"sv), ElementsAre(u"C:\\w\\one", u"C:\\w\\two"));
  EXPECT_THAT(Split(u"C:\\w\0one\0two\0"sv), ElementsAre(u"C:\\w\\one", u"C:\\w\\two"));
}

TEST(SplitDialogAnswer, TakesAsManyNamesAsTheBufferHolds) {
  WideText answer(u"C:\\\0"sv);
  for (int name = 0; name < 1000; ++name) answer += u"f\0"sv;
  EXPECT_EQ(Split(answer), std::vector<WideText>(1000, u"C:\\f"));
}

TEST(IsWholeAnswer, IsTrueWhenTheEndOfTheAnswerStandsInTheBuffer) {
  EXPECT_TRUE(IsWholeAnswer(u"C:\\w\\one.txt\0\0\0\0"sv));
  EXPECT_TRUE(IsWholeAnswer(u"C:\\w\0one\0two\0\0"sv)) << "it fills the buffer and is whole";
  EXPECT_TRUE(IsWholeAnswer(WideText(2048, u'\0')));
}

TEST(IsWholeAnswer, IsFalseForOneThatIsCutOffInANameOrBehindOne) {
  EXPECT_FALSE(IsWholeAnswer(u"C:\\w\0one\0tw"sv));
  EXPECT_FALSE(IsWholeAnswer(u"C:\\w\0one\0two\0"sv));
  EXPECT_FALSE(IsWholeAnswer(u"C:\\w\\on"sv));
  EXPECT_FALSE(IsWholeAnswer(WideView()));
}
