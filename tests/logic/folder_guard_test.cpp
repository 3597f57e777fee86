#include "cleaners/folder_guard.h"

#include <gtest/gtest.h>

using namespace cleaners;

namespace {

FolderFacts Folder(const std::string& canonical, std::vector<std::string> keep = {}) {
  FolderFacts facts;
  facts.canonical = canonical;
  facts.keep = std::move(keep);
  return facts;
}

}  // namespace

TEST(FolderGuard, AllowsAFolderBelowARoot) {
  for (const char* path : {"C:\\A", "C:\\A\\", "d:\\a\\b\\", "\\\\server\\share\\a\\"})
    EXPECT_TRUE(MayEmptyFolder(Folder(path, {"C:\\WINDOWS\\", "", "C:\\A2\\"}))) << path;
}

TEST(FolderGuard, RefusesWhatIsNoFolderBelowARoot) {
  for (const char* path : {"", "\\", "A", "C:", "C:A", "C:\\", "C:\\\\", "\\A", "\\\\server", "\\\\server\\share\\",
                           "\\\\.\\C:\\A", "\\\\?\\C:\\A"})
    EXPECT_FALSE(MayEmptyFolder(Folder(path))) << path;
}

TEST(FolderGuard, RefusesALinkAndWhatLeadsToAKeptFolder) {
  FolderFacts facts = Folder("C:\\A\\");
  facts.isLink = true;
  EXPECT_FALSE(MayEmptyFolder(facts));
  facts = Folder("C:\\A\\");
  facts.leadsToKept = true;
  EXPECT_FALSE(MayEmptyFolder(facts));
}

TEST(FolderGuard, RefusesAFolderThatIsOrHoldsAKeptOneAndAllowsOneInside) {
  const std::vector<std::string> keep = {"", "C:\\A\\B\\", "D:\\X\\"};
  for (const char* path : {"C:\\A\\", "c:\\a\\b", "C:\\A\\B\\", "D:\\X"})
    EXPECT_FALSE(MayEmptyFolder(Folder(path, keep))) << path;
  for (const char* path : {"C:\\A\\B\\C\\", "C:\\A\\B2", "C:\\A2", "D:\\A", "D:\\X\\Y"})
    EXPECT_TRUE(MayEmptyFolder(Folder(path, keep))) << path;
}

TEST(FolderGuard, TakesAnyTwoLettersBeyondAsciiForEqual) {
  EXPECT_FALSE(MayEmptyFolder(Folder("C:\\JOS\xC9", {"C:\\Jos\xE9\\"})));
}
