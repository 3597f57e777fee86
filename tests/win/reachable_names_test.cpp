// Names that the ANSI functions do not read as they are written, and the folder picker's list of them. The folders come from
// reachable_names_prepare.py; each holds its own name in a file "marker.txt".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "nothing_pending.h"
#include "scratch_folder.h"
#include "shred/subfolders.h"

using namespace platform;
using namespace shred;

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Names = std::vector<std::string>;

constexpr char kPlace[] = "C:\\plant\\names";

std::string MarkerIn(const std::string& folder) { return ReadWhole(folder + "\\marker.txt"); }

int RaisedBySubfoldersOf(const std::string& folder) {
  Err.Clear();
  resumeNext([&] { Subfolders(folder); });
  const int number = Err.Number();
  Err.Clear();
  return number;
}

using SubfoldersTest = NothingPending;
using AnsiPathTest = NothingPending;

}  // namespace

TEST_F(SubfoldersTest, LeadEachToItsOwnFolder) {
  Names markers;
  for (const std::string& name : Subfolders(kPlace)) markers.push_back(MarkerIn(kPlace + ("\\" + name)));
  EXPECT_THAT(markers, testing::UnorderedElementsAre("abc",
                                                     "\xEF\xBD\x81"
                                                     "bc",
                                                     "foo", "foo.", "bar", "bar ", "Zeta", "beta", "\xC3\x84mter",
                                                     "\xE6\x97\xA5\xE6\x9C\xAC", "l", "\xC5\x81"));
}

TEST_F(SubfoldersTest, AreInAlphabeticOrderWithoutFilesAndLinks) {
  const Names names = Subfolders(kPlace);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), [](const std::string& one, const std::string& other) {
    return ::lstrcmpiA(one.c_str(), other.c_str()) < 0;
  }));
  EXPECT_THAT(names, AllOf(Contains("beta"), Contains("Zeta"), Contains("\xC4mter")));
  EXPECT_THAT(names, AllOf(Not(Contains("file")), Not(Contains("link")), Not(Contains(".")), Not(Contains(".."))));
}

TEST_F(SubfoldersTest, AreListedOfAFolderWithOrWithoutABackslashHiddenOnesIncluded) {
  const ScratchFolder folder;
  ::CreateDirectoryA((folder / "hidden").c_str(), nullptr);
  ::SetFileAttributesA((folder / "hidden").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  EXPECT_THAT(Subfolders(folder.Path()), ElementsAre("hidden"));
  EXPECT_THAT(Subfolders(folder / ""), ElementsAre("hidden"));
}

TEST_F(SubfoldersTest, AreNoneInAnEmptyFolderOrRoot) {
  const ScratchFolder folder;
  EXPECT_THAT(Subfolders(folder.Path()), IsEmpty());
  EXPECT_THAT(Subfolders("D:"), IsEmpty());
  EXPECT_THAT(Subfolders("D:\\"), IsEmpty());
}

TEST_F(SubfoldersTest, OfAFolderThatCannotBeReadAreAnError) {
  const ScratchFolder folder;
  for (const std::string& missing : {folder / "missing", folder.File("file"), std::string("Q:\\")})
    EXPECT_NE(RaisedBySubfoldersOf(missing), 0) << missing;
}

TEST_F(AnsiPathTest, IsThePathItselfWhereTheAnsiFunctionsReadItLikewise) {
  for (const std::string path : {"C:\\", "C:\\test\\x.txt", "C:\\missing\\\xC4 b.c", "\\\\server\\share\\x", "C:\\test\\"})
    EXPECT_EQ(AnsiPath(ToNativePath(path)), path);
}

TEST_F(AnsiPathTest, IsTheShortFormOfAnEntryThatTheyReadOtherwise) {
  for (const std::wstring name : {L"\uFF41bc", L"foo.", L"bar ", L"\u65E5\u672C", L"\u0141"}) {
    const NativePath native = L"\\\\?\\C:\\plant\\names\\" + name;
    const std::string path = AnsiPath(native);
    EXPECT_THAT(path, Not(HasSubstr("?")));
    EXPECT_EQ(NativeIdentity(ToNativePath(path)), NativeIdentity(native)) << path;
    EXPECT_NE(ToNativePath(path), native) << path;
  }
}

TEST_F(AnsiPathTest, LeadsNowhereWithoutAShortForm) {
  EXPECT_EQ(AnsiPath(L"\\\\?\\C:\\plant\\names\\missing \uFF41"), "C:\\plant\\names\\missing ?");
  EXPECT_EQ(AnsiPath(L"\\\\?\\C:\\plant\\names\\missing."), "");
}
