// The lines of the folder picker's list: the folders above, the opened one, and what lies in it.
#include "shred/folder_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace shred;

using testing::ElementsAre;

namespace {

std::vector<std::string> Texts(const FolderLines& shown) {
  std::vector<std::string> texts;
  for (const FolderLine& line : shown.lines) texts.push_back(line.text);
  return texts;
}

std::vector<std::string> Paths(const FolderLines& shown) {
  std::vector<std::string> paths;
  for (const FolderLine& line : shown.lines) paths.push_back(line.path);
  return paths;
}

}  // namespace

TEST(LinesOfFolder, OfADriveAreItsRootAndTheFoldersInIt) {
  const FolderLines shown = LinesOfFolder("C:", {"Program Files", "windows"});
  EXPECT_THAT(Texts(shown), ElementsAre("C:\\", "   Program Files", "   windows"));
  EXPECT_THAT(Paths(shown), ElementsAre("C:\\", "C:\\Program Files", "C:\\windows"));
  EXPECT_EQ(shown.opened, 0);
}

TEST(LinesOfFolder, BeginWithTheFoldersThatItLiesInEachAStepFurtherToTheRight) {
  const FolderLines shown = LinesOfFolder("C:\\one\\two", {"three", "four"});
  EXPECT_THAT(Texts(shown), ElementsAre("C:\\", "   one", "      two", "         three", "         four"));
  EXPECT_THAT(Paths(shown), ElementsAre("C:\\", "C:\\one", "C:\\one\\two", "C:\\one\\two\\three", "C:\\one\\two\\four"));
  EXPECT_EQ(shown.opened, 2);
}

TEST(LinesOfFolder, EndWithTheOpenedFolderWhenItHoldsNone) {
  const FolderLines shown = LinesOfFolder("C:\\one", {});
  EXPECT_THAT(Paths(shown), ElementsAre("C:\\", "C:\\one"));
  EXPECT_EQ(shown.opened, 1);
}

TEST(LinesOfFolder, AreTheSameWithABackslashBehindTheFolder) {
  for (const char* folder : {"C:\\", "C:\\one\\", "C:\\one\\two\\"}) {
    const std::string bare(folder, std::string_view(folder).size() - 1);
    const FolderLines shown = LinesOfFolder(folder, {"x"});
    EXPECT_EQ(Paths(shown), Paths(LinesOfFolder(bare, {"x"})));
    EXPECT_EQ(shown.opened, LinesOfFolder(bare, {"x"}).opened);
  }
}

TEST(LinesOfFolder, KeepTheOrderOfTheFoldersAndEveryByteOfTheirNames) {
  const FolderLines shown = LinesOfFolder("D:\\my work, old", {"b", " a ", "\xE4\xF6", "a"});
  EXPECT_THAT(Paths(shown), ElementsAre("D:\\", "D:\\my work, old", "D:\\my work, old\\b", "D:\\my work, old\\ a ",
                                        "D:\\my work, old\\\xE4\xF6", "D:\\my work, old\\a"));
  EXPECT_EQ(shown.lines[3].text, "       a ");
}

// What a double click on a line opens is the line's path, so each leads to a list of its own.
TEST(LinesOfFolder, LeadToAListThatHasTheirPathOpened) {
  const FolderLines shown = LinesOfFolder("C:\\one\\two", {"three"});
  for (const FolderLine& line : shown.lines) {
    const FolderLines next = LinesOfFolder(line.path, {});
    EXPECT_EQ(next.lines[static_cast<std::size_t>(next.opened)].path, line.path);
  }
}
