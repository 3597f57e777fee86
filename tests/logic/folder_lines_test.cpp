// The lines of the folder picker's list: the folders above, the opened one, and what lies in it.
#include "shred/folder_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shown.h"

using namespace platform;
using namespace shred;

using testing::ElementsAre;

namespace {

std::vector<WideText> Texts(const FolderLines& shown) {
  std::vector<WideText> texts;
  for (const FolderLine& line : shown.lines) texts.push_back(line.text);
  return texts;
}

std::vector<WideText> Paths(const FolderLines& shown) {
  std::vector<WideText> paths;
  for (const FolderLine& line : shown.lines) paths.push_back(line.path.Shown());
  return paths;
}

}  // namespace

TEST(LinesOfFolder, OfADriveAreItsRootAndTheFoldersInIt) {
  const FolderLines shown = LinesOfFolder(FullPath(u"C:\\"), {u"Program Files", u"windows"});
  EXPECT_THAT(Texts(shown), ElementsAre(u"C:\\", u"   Program Files", u"   windows"));
  EXPECT_THAT(Paths(shown), ElementsAre(u"C:\\", u"C:\\Program Files", u"C:\\windows"));
  EXPECT_EQ(shown.opened, 0);
}

TEST(LinesOfFolder, BeginWithTheFoldersThatItLiesInEachAStepFurtherToTheRight) {
  const FolderLines shown = LinesOfFolder(FullPath(u"C:\\one\\two"), {u"three", u"four"});
  EXPECT_THAT(Texts(shown), ElementsAre(u"C:\\", u"   one", u"      two", u"         three", u"         four"));
  EXPECT_THAT(Paths(shown),
              ElementsAre(u"C:\\", u"C:\\one", u"C:\\one\\two", u"C:\\one\\two\\three", u"C:\\one\\two\\four"));
  EXPECT_EQ(shown.opened, 2);
}

TEST(LinesOfFolder, EndWithTheOpenedFolderWhenItHoldsNone) {
  const FolderLines shown = LinesOfFolder(FullPath(u"C:\\one"), {});
  EXPECT_THAT(Paths(shown), ElementsAre(u"C:\\", u"C:\\one"));
  EXPECT_EQ(shown.opened, 1);
}

TEST(LinesOfFolder, OfAShareBeginWithItsRoot) {
  const FolderLines shown = LinesOfFolder(FullPath(u"\\\\server\\share\\one"), {u"x"});
  EXPECT_THAT(Texts(shown), ElementsAre(u"\\\\server\\share\\", u"   one", u"      x"));
  EXPECT_EQ(shown.opened, 1);
}

TEST(LinesOfFolder, KeepTheOrderOfTheFoldersAndEveryCharacterOfTheirNames) {
  const FolderLines shown = LinesOfFolder(FullPath(u"D:\\my work, old"), {u"b", u" a ", u"\u5341\xD83D", u"a"});
  EXPECT_THAT(Paths(shown), ElementsAre(u"D:\\", u"D:\\my work, old", u"D:\\my work, old\\b", u"D:\\my work, old\\ a ",
                                        u"D:\\my work, old\\\u5341\xD83D", u"D:\\my work, old\\a"));
  EXPECT_EQ(shown.lines[3].text, u"       a ");
}

// What a double click on a line opens is the line's path, so each leads to a list of its own.
TEST(LinesOfFolder, LeadToAListThatHasTheirPathOpened) {
  const FolderLines shown = LinesOfFolder(FullPath(u"C:\\one\\two"), {u"three"});
  for (const FolderLine& line : shown.lines) {
    const FolderLines next = LinesOfFolder(line.path, {});
    EXPECT_EQ(next.lines[static_cast<std::size_t>(next.opened)].path, line.path);
  }
}

TEST(NextLineWith, FindsANameByItsLetterAfterTheChosenLineAndFromTheTopAgain) {
  const FolderLines shown = LinesOfFolder(FullPath(u"C:\\one"), {u"\u00DCbung", u"Ox", u"two", u" x"});
  ASSERT_THAT(Texts(shown), ElementsAre(u"C:\\", u"   one", u"      \u00DCbung", u"      Ox", u"      two", u"       x"));
  const struct {
    int from;
    WideView letter;
    int line;
  } rows[] = {{0, u"o", 1}, {1, u"o", 3},  {3, u"O", 1},      {4, u"t", 4}, {-1, u"c", 0},
              {5, u"c", 0}, {1, u"q", -1}, {1, u"\u00FC", 2}, {0, u"x", 5}};
  for (const auto& row : rows)
    EXPECT_EQ(NextLineWith(shown, row.from, row.letter), row.line)
        << row.from << testing::PrintToString(WideText(row.letter));
  EXPECT_EQ(NextLineWith({}, -1, u"a"), -1) << "of a drive that could not be read";
}
