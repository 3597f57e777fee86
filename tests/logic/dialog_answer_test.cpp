// What the file-open dialog leaves in its buffer, as full paths.
#include "shred/dialog_answer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace shred;

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_view_literals;

TEST(SplitDialogAnswer, GivesTheOnePathOfASingleSelection) {
  EXPECT_THAT(SplitDialogAnswer("C:\\work\\one.txt\0\0"sv), ElementsAre("C:\\work\\one.txt"));
}

TEST(SplitDialogAnswer, PutsTheFolderBeforeEachNameOfSeveral) {
  EXPECT_THAT(SplitDialogAnswer("C:\\work\0one.txt\0two.txt\0three.txt\0\0"sv),
              ElementsAre("C:\\work\\one.txt", "C:\\work\\two.txt", "C:\\work\\three.txt"));
}

TEST(SplitDialogAnswer, DoesNotDoubleTheBackslashOfARoot) {
  EXPECT_THAT(SplitDialogAnswer("C:\\\0one.txt\0two.txt\0\0"sv), ElementsAre("C:\\one.txt", "C:\\two.txt"));
}

TEST(SplitDialogAnswer, TakesAFolderOnTheNetwork) {
  EXPECT_THAT(SplitDialogAnswer("\\\\server\\share\0one.txt\0two.txt\0\0"sv),
              ElementsAre("\\\\server\\share\\one.txt", "\\\\server\\share\\two.txt"));
}

TEST(SplitDialogAnswer, PutsTheFolderBeforeASingleNameThatStandsApart) {
  EXPECT_THAT(SplitDialogAnswer("C:\\work\0one.txt\0\0"sv), ElementsAre("C:\\work\\one.txt"));
}

TEST(SplitDialogAnswer, SplitsAtNulAloneAndNotAtBlanksCommasQuotesOrSemicolons) {
  EXPECT_THAT(SplitDialogAnswer("C:\\my work, old\0one two.txt\0a,b;c.txt\0 'd' \0\0"sv),
              ElementsAre("C:\\my work, old\\one two.txt", "C:\\my work, old\\a,b;c.txt", "C:\\my work, old\\ 'd' "));
  EXPECT_THAT(SplitDialogAnswer("C:\\my work, old\\one two.txt\0\0"sv), ElementsAre("C:\\my work, old\\one two.txt"));
}

TEST(SplitDialogAnswer, KeepsTheOrderAndNamesThatComeTwice) {
  EXPECT_THAT(SplitDialogAnswer("C:\\w\0b\0a\0b\0\0"sv), ElementsAre("C:\\w\\b", "C:\\w\\a", "C:\\w\\b"));
}

TEST(SplitDialogAnswer, KeepsEveryByteOfAName) {
  EXPECT_THAT(SplitDialogAnswer("C:\\w\0\xE4\xF6\xFC.txt\0\x81\x40\0\0"sv),
              ElementsAre("C:\\w\\\xE4\xF6\xFC.txt", "C:\\w\\\x81\x40"));
}

TEST(SplitDialogAnswer, SplitsWideCharactersLikewise) {
  EXPECT_THAT(SplitDialogAnswer(L"C:\\Папка\0файл.txt\0two.txt\0\0old\0"sv),
              ElementsAre(L"C:\\Папка\\файл.txt", L"C:\\Папка\\two.txt"));
  EXPECT_THAT(SplitDialogAnswer(L"C:\\Папка\\файл.txt\0\0"sv), ElementsAre(L"C:\\Папка\\файл.txt"));
  EXPECT_TRUE(IsWholeAnswer(L"C:\\Папка\0файл\0\0"sv));
  EXPECT_FALSE(IsWholeAnswer(L"C:\\Папка\0файл\0"sv));
}

TEST(SplitDialogAnswer, FindsNothingInAnEmptyBuffer) {
  EXPECT_THAT(SplitDialogAnswer(std::string_view()), IsEmpty());
  EXPECT_THAT(SplitDialogAnswer(std::string(2048, '\0')), IsEmpty());
}

TEST(SplitDialogAnswer, DoesNotLookBehindTheEndOfTheAnswer) {
  EXPECT_THAT(SplitDialogAnswer("C:\\w\\one.txt\0\0C:\\old\\answer.txt\0more\0"sv), ElementsAre("C:\\w\\one.txt"));
  EXPECT_THAT(SplitDialogAnswer("C:\\w\0one\0two\0\0three\0\0"sv), ElementsAre("C:\\w\\one", "C:\\w\\two"));
  EXPECT_THAT(SplitDialogAnswer("\0C:\\old\\answer.txt\0"sv), IsEmpty());
}

TEST(SplitDialogAnswer, StaysInABufferThatIsFullToItsEnd) {
  const std::string name(2048, 'x');
  EXPECT_THAT(SplitDialogAnswer(name), ElementsAre(name));
  EXPECT_THAT(SplitDialogAnswer("C:\\w\0one\0two"sv), ElementsAre("C:\\w\\one", "C:\\w\\two"));
  EXPECT_THAT(SplitDialogAnswer("C:\\w\0one\0two\0"sv), ElementsAre("C:\\w\\one", "C:\\w\\two"));
}

TEST(SplitDialogAnswer, TakesAsManyNamesAsTheBufferHolds) {
  std::string answer("C:\\\0"sv);
  for (int name = 0; name < 1000; ++name) answer += "f\0"sv;
  EXPECT_EQ(SplitDialogAnswer(answer), std::vector<std::string>(1000, "C:\\f"));
}

TEST(IsWholeAnswer, IsTrueWhenTheEndOfTheAnswerStandsInTheBuffer) {
  EXPECT_TRUE(IsWholeAnswer("C:\\w\\one.txt\0\0\0\0"sv));
  EXPECT_TRUE(IsWholeAnswer("C:\\w\0one\0two\0\0"sv)) << "it fills the buffer and is whole";
  EXPECT_TRUE(IsWholeAnswer(std::string(2048, '\0')));
}

TEST(IsWholeAnswer, IsFalseForOneThatIsCutOffInANameOrBehindOne) {
  EXPECT_FALSE(IsWholeAnswer("C:\\w\0one\0tw"sv));
  EXPECT_FALSE(IsWholeAnswer("C:\\w\0one\0two\0"sv));
  EXPECT_FALSE(IsWholeAnswer("C:\\w\\on"sv));
  EXPECT_FALSE(IsWholeAnswer(std::string_view()));
}
