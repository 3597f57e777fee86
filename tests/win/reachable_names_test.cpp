// Names that the ANSI functions do not read as they are written, and the folder picker's list of them. The folders come from
// reachable_names_prepare.py; each holds its own name in a file "marker.txt".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "ansi_paths.h"
#include "nothing_pending.h"
#include "platform/native_files.h"
#include "platform/whole_file.h"
#include "scratch_folder.h"
#include "shred/subfolders.h"

using namespace platform;
using namespace shred;

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Names = std::vector<WideText>;

const Path kPlace = FullPath(L"C:\\plant\\names");

int RaisedBySubfoldersOf(const Path& folder) {
  Err.Clear();
  resumeNext([&] { Subfolders(folder); });
  const int number = Err.Number();
  Err.Clear();
  return number;
}

// Of the scratch folder, with and without wide functions.
class PathOfTest : public NothingPending, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    NothingPending::SetUp();
    AnsiNamesOnlyForTests = GetParam();
    folder.File("inner\\file.txt");
    ::SetCurrentDirectoryA((folder / "inner").c_str());
  }
  void TearDown() override {
    AnsiNamesOnlyForTests = false;
    ::SetCurrentDirectoryA("C:\\");
    NothingPending::TearDown();
  }

  const ScratchFolder folder;
};
INSTANTIATE_TEST_SUITE_P(WideAndAnsi, PathOfTest, testing::Bool());

using SubfoldersTest = NothingPending;
using ShortFormTest = NothingPending;

}  // namespace

TEST_F(SubfoldersTest, AreListedByTheirRealNamesAndLeadEachToItsOwnFolder) {
  const Names names = Subfolders(kPlace);
  EXPECT_THAT(names, testing::UnorderedElementsAre(L"abc", L"\uFF41bc", L"foo", L"foo.", L"bar", L"bar ", L"Zeta", L"beta",
                                                   L"\u00C4mter", L"\u65E5\u672C", L"l", L"\u0141"));
  for (const WideText& name : names) {
    const std::string marker = ReadWholeFile(kPlace / name / L"marker.txt");
    WideText told(marker.size(), L'\0');
    told.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, marker.data(), static_cast<int>(marker.size()),
                                                               told.data(), static_cast<int>(told.size()))));
    EXPECT_EQ(told, name);
  }
}

TEST_F(SubfoldersTest, AreInAlphabeticOrderWithoutFilesAndLinks) {
  const Names names = Subfolders(kPlace);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), [](const WideText& one, const WideText& other) {
    return ::lstrcmpiW(one.c_str(), other.c_str()) < 0;
  }));
  EXPECT_THAT(names, AllOf(Not(Contains(L"file")), Not(Contains(L"link")), Not(Contains(L".")), Not(Contains(L".."))));
}

TEST_F(SubfoldersTest, AreListedHiddenOnesIncluded) {
  const ScratchFolder folder;
  ::CreateDirectoryA((folder / "hidden").c_str(), nullptr);
  ::SetFileAttributesA((folder / "hidden").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  EXPECT_THAT(Subfolders(At(folder.Path())), ElementsAre(L"hidden"));
}

TEST_F(SubfoldersTest, AreNoneInAnEmptyFolderOrRoot) {
  const ScratchFolder folder;
  EXPECT_THAT(Subfolders(At(folder.Path())), IsEmpty());
  EXPECT_THAT(Subfolders(At("D:\\")), IsEmpty());
}

TEST_F(SubfoldersTest, OfAFolderThatCannotBeReadAreAnError) {
  const ScratchFolder folder;
  for (const Path& missing : {At(folder / "missing"), At(folder.File("file")), At("Q:\\"), Path()})
    EXPECT_NE(RaisedBySubfoldersOf(missing), 0) << testing::PrintToString(missing);
}

TEST_P(PathOfTest, TakesATextFromTheCurrentFolder) {
  const Path inner = At(folder / "inner");
  const struct {
    const wchar_t* text;
    Path path;
  } rows[] = {
      {L"file.txt", inner / L"file.txt"},
      {L".", inner},
      {L"..", inner.Parent()},
      {L"..\\missing/x", inner.Parent() / L"missing\\x"},
      {L"C:", inner},
      {L"c:file.txt", inner / L"file.txt"},
      {L"\\", At("C:\\")},
      {L"/windows", At("C:\\windows")},
      {L"C:/windows", At("C:\\windows")},
      {L"D:", At("D:\\")},
      {L"D:x", At("D:\\x")},
      {L"", Path()},
      {L"NUL", Path()},
      {L"...", Path()},
      {L"*.txt", Path()},
      {L"file.txt:stream", Path()},
      {L"\\\\.\\C:", Path()},
      {L"\\\\server", Path()},
  };
  for (const auto& row : rows) EXPECT_EQ(PathOf(row.text), row.path) << testing::PrintToString(row.text);
}

TEST_P(PathOfTest, TakesACurrentFolderThatTheCodePageLacksWhereTheSystemHasIt) {
  // Runs in the other row of these tests: such a folder cannot be entered without the wide functions.
  if (GetParam()) GTEST_SKIP() << "there is no such folder to systems without wide functions";
  ASSERT_TRUE(::SetCurrentDirectoryW(L"C:\\plant\\names\\\u0141"));
  EXPECT_EQ(PathOf(L"marker.txt"), kPlace / L"\u0141\\marker.txt");
}

TEST_F(ShortFormTest, LeadsToTheSameFolder) {
  for (const WideText name : {L"\uFF41bc", L"foo.", L"bar ", L"\u65E5\u672C", L"\u0141"}) {
    const Path shortened = ShortForm(kPlace / name);
    EXPECT_EQ(NativeIdentity(shortened), NativeIdentity(kPlace / name)) << testing::PrintToString(shortened);
    EXPECT_TRUE(NarrowExactly(shortened.Shown())) << testing::PrintToString(shortened);
  }
  EXPECT_EQ(ShortForm(At("C:\\")), At("C:\\"));
  EXPECT_EQ(ShortForm(kPlace / L"missing"), Path());
  EXPECT_EQ(ShortForm(Path()), Path());
}
