#include "shred/folder_removal.h"
#include "shred/modShred.h"

#include <gtest/gtest.h>

#include "nothing_pending.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "platform/wide_system.h"
#include "scratch_folder.h"

using namespace platform;
using namespace shred;

namespace {

class ModShred : public NothingPending {
 protected:
  ScratchFolder folder;
};
using ValidateTest = ModShred;
using FolderCheckTest = ModShred;

UniqueFile Open(const std::string& path, DWORD access, DWORD share) {
  return UniqueFile(::CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

}  // namespace

TEST_F(ValidateTest, IsTrueForAFileThatCanBeRead) {
  const std::string file = folder.File("file.txt");
  const std::string empty = folder.File("empty", "");
  const std::string guarded = folder.File("guarded.txt");
  ::SetFileAttributesA(guarded.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  for (const std::string& path : {file, empty, guarded}) EXPECT_TRUE(Validate(PathOf(Widen(path)))) << path;
}

TEST_F(ValidateTest, IsFalseForWhatIsNoFile) {
  folder.File("file.txt");
  for (const std::string& path :
       {folder / "missing.txt", folder / "none\\file.txt", folder / "*.txt", folder.Path(), folder.Path() + "\\",
        std::string("C:\\"), std::string(), std::string("Q:\\file.txt"), folder / std::string(300, 'n')})
    EXPECT_FALSE(Validate(PathOf(Widen(path)))) << path.substr(0, 60);
}

TEST_F(ValidateTest, IsFalseForAFileThatAnotherProgramSharesWithNobody) {
  const std::string file = folder.File("file.txt");
  const UniqueFile holder = Open(file, GENERIC_READ, 0);
  ASSERT_TRUE(holder);
  EXPECT_FALSE(Validate(PathOf(Widen(file))));
}

TEST_F(ValidateTest, IsTrueForAFileThatAnotherProgramWritesAndShares) {
  const std::string file = folder.File("file.txt");
  const UniqueFile holder = Open(file, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
  ASSERT_TRUE(holder);
  EXPECT_TRUE(Validate(PathOf(Widen(file))));
}

TEST_F(ValidateTest, ClosesTheFileAgainAndLeavesItAsItIs) {
  const std::string file = folder.File("file.txt", "the content");
  EXPECT_TRUE(Validate(PathOf(Widen(file))));
  EXPECT_TRUE(Open(file, GENERIC_READ | GENERIC_WRITE, 0)) << "nobody else holds it";
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(FolderCheckTest, IsTrueForAFolderWithAndWithoutABackslash) {
  ::CreateDirectoryA((folder / "empty").c_str(), nullptr);
  for (const std::string& path : {folder.Path(), folder.Path() + "\\", folder / "empty", folder / "empty\\",
                                  std::string("C:\\"), std::string("c:\\TEST\\Scratch")})
    EXPECT_TRUE(FolderCheck(PathOf(Widen(path)))) << path;
}

TEST_F(FolderCheckTest, IsFalseForAMissingFolder) {
  for (const std::string& path : {folder / "missing", folder / "missing\\", folder / "a\\b\\c", std::string("Q:\\"),
                                  std::string(), std::string("Q:\\folder"), folder / "?"})
    EXPECT_FALSE(FolderCheck(PathOf(Widen(path)))) << path;
  EXPECT_TRUE(NamesIn(folder.Path()).empty()) << "nothing is made unless it is asked for";
}

TEST_F(FolderCheckTest, IsFalseForAFile) {
  const std::string file = folder.File("file.txt", "the content");
  EXPECT_FALSE(FolderCheck(PathOf(Widen(file))));
  EXPECT_FALSE(FolderCheck(PathOf(Widen(file)), true));
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(FolderCheckTest, MakesTheWholeChainAndStillSaysFalse) {
  for (const char* path : {"one\\two\\three", "four\\five\\"}) {
    EXPECT_FALSE(FolderCheck(PathOf(Widen(folder / path)), true)) << path;
    EXPECT_TRUE(FolderCheck(PathOf(Widen(folder / path)))) << path;
  }
  EXPECT_EQ(NamesIn(folder / "one\\two"), std::vector<std::string>{"three"});
}

TEST_F(FolderCheckTest, GoesOnInAChainThatIsThereInPart) {
  ::CreateDirectoryA((folder / "one").c_str(), nullptr);
  const std::string file = folder.File("one\\file.txt", "the content");
  EXPECT_FALSE(FolderCheck(PathOf(Widen(folder / "one\\two\\three")), true));
  EXPECT_TRUE(FolderCheck(PathOf(Widen(folder / "one\\two\\three"))));
  EXPECT_EQ(ReadWhole(file), "the content");
}

TEST_F(FolderCheckTest, IsTrueForAnExistingFolderAlsoWhenItMayMakeOne) {
  EXPECT_TRUE(FolderCheck(PathOf(Widen(folder.Path())), true));
}

TEST_F(FolderCheckTest, MakesAChainFromTheCurrentFolder) {
  ::SetCurrentDirectoryA(folder.Path().c_str());
  EXPECT_FALSE(FolderCheck(PathOf(L"one\\two"), true));
  EXPECT_TRUE(FolderCheck(PathOf(Widen(folder / "one\\two"))));
}

TEST_F(FolderCheckTest, MakesNothingWhereAFileStandsInTheWay) {
  const std::string file = folder.File("file.txt", "the content");
  EXPECT_FALSE(FolderCheck(PathOf(Widen(file + "\\two\\three")), true));
  EXPECT_EQ(ReadWhole(file), "the content");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"file.txt"});
}

TEST_F(FolderCheckTest, MakesNothingOnADriveThatIsNotThere) {
  EXPECT_FALSE(FolderCheck(PathOf(L"Q:\\one\\two"), true));
  EXPECT_FALSE(FolderCheck(PathOf(L"Q:\\one\\two")));
  EXPECT_FALSE(FolderCheck(PathOf(L""), true));
}
