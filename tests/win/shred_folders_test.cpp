// The folder procedures of the shredder, by wide names and by ANSI names. The links and the canaries come from
// shred_folders_prepare.py, which also looks at the disk afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "ansi_paths.h"
#include "exchange_on_deletion.h"
#include "file_calls.h"
#include "import_hook.h"
#include "platform/ErroHandle.h"
#include "platform/native_files.h"
#include "scratch_folder.h"
#include "shred/folder_removal.h"
#include "ways_of_names.h"
#include "window_event.h"

using namespace platform;
using namespace shred;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

Names MissingCanaries() {
  Names missing;
  std::ifstream list("C:\\canaries.txt");
  EXPECT_TRUE(list) << "nobody planted canaries";
  for (std::string path; std::getline(list, path);) {
    if (!path.empty() && path.back() == '\r') path.pop_back();
    if (!IsThere(path)) missing.push_back(path);
  }
  return missing;
}

void MakeFile(const std::string& path, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
  MakeFoldersFor(path);
  const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr));
  EXPECT_TRUE(file) << path << " cannot be made, system error " << ::GetLastError();
}

// As the program takes them over from the system.
bool RemoveFolderTree(const std::string& folder) { return shred::RemoveFolderTree(At(folder)); }
void ClearSubFolders(const std::string& folder) { shred::ClearSubFolders(At(folder)); }
void ShredFolder(const std::string& folder) { shred::ShredFolder(At(folder)); }

class ShredFolders : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    AnsiNamesOnlyForTests = ByAnsi();
    Err.Clear();
    ::SetCurrentDirectoryA("C:\\current");
  }

  void TearDown() override {
    AnsiNamesOnlyForTests = false;
    EXPECT_THAT(MissingCanaries(), IsEmpty());
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
    EXPECT_EQ(burst.ReportsForTests(), 0) << "these procedures never report";
  }

  bool ByAnsi() const { return GetParam() == std::string("ansi"); }
  std::string Planted(const std::string& name) const { return "C:\\plant\\" + std::string(GetParam()) + "\\" + name; }

  void MakeFiles(const Names& names) const {
    for (const std::string& name : names) MakeFile(folder / name);
  }

  Names Left() const { return NamesBelow(folder.Path()); }

  // None of the folder procedures touches it.
  static void ExpectRefused(const std::string& path) {
    EXPECT_FALSE(RemoveFolderTree(path)) << '"' << path << '"';
    ClearSubFolders(path);
    ShredFolder(path);
    ASSERT_THAT(MissingCanaries(), IsEmpty()) << '"' << path << '"';
  }

  const ScratchFolder folder;
  const ReportBurst burst;
};

INSTANTIATE_TEST_SUITE_P(Names, ShredFolders, testing::ValuesIn(WaysOfNames()), NameOfWay);

Names deleted;
const auto systemDeleteFile = importedDeleteFileA;

BOOL WINAPI NoteTheName(LPCSTR path) {
  const std::string text = path;
  deleted.push_back(text.substr(text.rfind('\\') + 1));
  return systemDeleteFile(path);
}

// Folders that are read-only as most systems understand it: they stay until they are made normal. Wine removes them.
Names madeNormal;
const auto systemSetFileAttributes = importedSetFileAttributesA;
const auto systemRemoveDirectory = importedRemoveDirectoryA;

BOOL WINAPI NoteWhatIsMadeNormal(LPCSTR path, DWORD attributes) {
  if (attributes == FILE_ATTRIBUTE_NORMAL) madeNormal.push_back(path);
  return systemSetFileAttributes(path, attributes);
}

BOOL WINAPI RemoveWhatIsNormal(LPCSTR path) {
  if (std::find(madeNormal.begin(), madeNormal.end(), path) != madeNormal.end()) return systemRemoveDirectory(path);
  ::SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

BOOL WINAPI RemoveNothing(LPCSTR) {
  ::SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

int events;
void CALLBACK CountEvent(HWND, UINT, UINT_PTR, DWORD) { ++events; }

}  // namespace

// Its own files, then those of the first subfolder by their endings, then the rest.
TEST_P(ShredFolders, TakeTheFilesOfAFolderThenASubfolderAndThenTheTree) {
  MakeFiles(
      {"tree\\z.txt", "tree\\a.gif", "tree\\sub\\b.txt", "tree\\sub\\c.jpg", "tree\\sub\\d.gif", "tree\\sub\\e\\f.gif"});
  const FileCalls calls;
  ShredFolder(folder / "tree");
  Names order;
  for (const std::string& path : calls.Deleted()) order.push_back(path.substr(folder.Path().size() + 6));
  ASSERT_EQ(order.size(), 6u);
  EXPECT_THAT(Names(order.begin(), order.begin() + 2), UnorderedElementsAre("z.txt", "a.gif"));
  EXPECT_THAT(Names(order.begin() + 2, order.end()), ElementsAre("sub\\d.gif", "sub\\c.jpg", "sub\\b.txt", "sub\\e\\f.gif"));
  EXPECT_THAT(Left(), IsEmpty());
}

// The listing was taken before.
TEST_P(ShredFolders, LeaveASubfolderThatALinkHasTakenThePlaceOf) {
  MakeFiles({"tree\\sub\\kept.txt"});
  {
    const FileCalls calls;
    calls.ShowAsLink(folder / "tree\\sub");
    ClearSubFolders(folder / "tree");
  }
  EXPECT_THAT(Left(), UnorderedElementsAre("tree", "tree\\sub", "tree\\sub\\kept.txt"));
}

TEST_P(ShredFolders, LeaveTheRestOfAFolderThatALinkHasTakenThePlaceOfMeanwhile) {
  MakeFiles({"tree\\first.txt", "tree\\sub\\kept.txt"});
  {
    const FileCalls calls;
    calls.AfterEachDeletion([&](const std::string&) {
      calls.ShowAsLink(folder / "tree");
      LetTheNextLookBeDue();  // an event may have done it
    });
    ShredFolder(folder / "tree");
  }
  EXPECT_THAT(Left(), UnorderedElementsAre("tree", "tree\\sub", "tree\\sub\\kept.txt"));
}

TEST_P(ShredFolders, DeleteNothingThatALinkLeadsToThatAnEventPutsInTheFoldersPlace) {
  const std::string place = "C:\\swap\\" + std::string(GetParam());
  {
    const FileCalls calls;
    const WindowEvents waiting;
    ExchangeAfterTheFirstDeletion(calls, waiting, place);
    ShredFolder(place + "\\tree");
  }
  EXPECT_THAT(NamesBelow(place + "\\moved away"), SizeIs(19)) << "one was deleted before";
}

TEST_P(ShredFolders, RemoveATreeWithEverythingInIt) {
  MakeFiles({"tree\\one.txt", "tree\\a\\two.txt", "tree\\a\\b\\c\\three.txt", "tree\\z\\four.txt", "tree2\\kept.txt"});
  ::CreateDirectoryA((folder / "tree\\empty").c_str(), nullptr);
  EXPECT_TRUE(RemoveFolderTree(folder / "tree"));
  EXPECT_THAT(Left(), UnorderedElementsAre("tree2", "tree2\\kept.txt"));
}

TEST_P(ShredFolders, RemoveATreeWithOrWithoutABackslash) {
  for (const char* end : {"", "\\", "\\\\", "\\."}) {
    MakeFiles({"tree\\a\\file.txt"});
    EXPECT_TRUE(RemoveFolderTree(folder / "tree" + end)) << end;
    EXPECT_THAT(Left(), IsEmpty()) << end;
  }
}

TEST_P(ShredFolders, RemoveATreeByForce) {
  constexpr DWORD kAll = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  MakeFile(folder / "tree\\a\\read only.txt", FILE_ATTRIBUTE_READONLY);
  MakeFile(folder / "tree\\all.txt", kAll);
  for (const char* name : {"tree", "tree\\a"}) ::SetFileAttributesA((folder / name).c_str(), kAll);
  EXPECT_TRUE(RemoveFolderTree(folder / "tree"));
  EXPECT_THAT(Left(), IsEmpty());
}

TEST_P(ShredFolders, SayThatATreeWithAFileInUseIsStillThere) {
  MakeFiles({"tree\\a\\one.txt", "tree\\b\\held.txt", "tree\\c\\two.txt"});
  const UniqueFile holder(
      ::CreateFileA((folder / "tree\\b\\held.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  EXPECT_FALSE(RemoveFolderTree(folder / "tree"));
  EXPECT_THAT(Left(), ElementsAre("tree", "tree\\b", "tree\\b\\held.txt")) << "the rest goes all the same";
}

TEST_P(ShredFolders, SayFalseForAMissingTreeAndForAFile) {
  MakeFiles({"file.txt"});
  for (const char* name : {"missing", "missing\\", "file.txt", "file.txt\\", "no\\folder", "*", "?"})
    EXPECT_FALSE(RemoveFolderTree(folder / name)) << name;
  EXPECT_THAT(Left(), ElementsAre("file.txt"));
}

TEST_P(ShredFolders, RemoveATreeThatIsDeeperThanAPathIsLong) {
  // The wide way runs this. A path of more than 259 characters cannot even be asked for by the other one.
  if (ByAnsi()) GTEST_SKIP() << "the ANSI functions reach no such path";
  std::wstring path = L"\\\\?\\" + std::wstring(folder.Path().begin(), folder.Path().end()) + L"\\tree";
  for (int level = 0; level < 20; ++level) {
    ::CreateDirectoryW(path.c_str(), nullptr);
    path += L"\\a name of some twenty letters";
  }
  EXPECT_TRUE(RemoveFolderTree(folder / "tree"));
  EXPECT_THAT(Left(), IsEmpty());
}

TEST_P(ShredFolders, LetEventsRunWhileATreeIsRemoved) {
  for (int number = 0; number < 2000; ++number) MakeFile(folder / "tree\\file" + std::to_string(number));
  events = 0;
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &CountEvent);
  EXPECT_TRUE(RemoveFolderTree(folder / "tree"));
  ::KillTimer(nullptr, timer);
  EXPECT_GT(events, 0);
}

TEST_P(ShredFolders, NeverEnterALink) {
  ShredFolder(Planted("tree"));  // with its links when the system tells what kind they are
  for (const std::string& name : NamesBelow(Planted("tree")))
    EXPECT_EQ(name.find(".txt"), std::string::npos) << name << " is left";
}

TEST_P(ShredFolders, LeaveAFolderThatIsALinkItself) {
  for (const char* name : {"root", "root\\", "root\\."}) ExpectRefused(Planted(name));
  EXPECT_TRUE(IsThere(Planted("root")));
}

TEST_P(ShredFolders, DeleteNothingBehindALinkAmongTheSubFolders) { ClearSubFolders(Planted("only a link")); }

TEST_P(ShredFolders, LeaveWhatIsNoFullPathOfAFolderBelowARoot) {
  for (const char* path : {"",
                           " ",
                           "\\",
                           "/",
                           ".",
                           "..",
                           "...",
                           "C:",
                           "C:.",
                           "C:\\",
                           "c:\\",
                           "C:/",
                           "C:\\\\",
                           "C:\\.",
                           "C:\\test\\..",
                           "C:\\missing\\..",
                           "C:\\*",
                           "C:\\*.*",
                           "C:\\?",
                           "X:",
                           "X:\\",
                           "\\\\server",
                           "\\\\server\\share",
                           "\\\\server\\share\\",
                           "\\\\server\\share\\x\\..",
                           "first canary",
                           ".\\first canary",
                           "C:first canary",
                           "\\current",
                           "\\\\?\\C:\\current",
                           "\\\\.\\C:\\",
                           "C:\\current\\canary.txt",
                           "C:\\current\\can*"})
    ExpectRefused(path);
  ExpectRefused("C:\\" + std::string(300, 'x') + "\\..\\current\\..");
}

TEST_P(ShredFolders, LeaveTheFoldersThatTheSystemAndTheProgramLiveIn) {
  const std::string profile = std::getenv("USERPROFILE");
  for (const std::string& path : {std::string("C:\\windows"),
                                  std::string("c:\\WINDOWS\\"),
                                  std::string("C:\\windows\\system32"),
                                  std::string("C:\\windows\\system32\\..\\..\\windows"),
                                  std::string("C:\\windows."),
                                  std::string("C:\\Program Files"),
                                  std::string("C:\\PROGRA~1"),
                                  std::string("C:\\Program Files\\Common Files"),
                                  std::string("C:\\ProgramData"),
                                  std::string("C:\\users\\Public"),
                                  profile + "\\Desktop",
                                  profile + "\\Favorites",
                                  profile + "\\Documents",
                                  profile + "\\AppData\\Roaming",
                                  profile + "\\AppData",
                                  std::string("C:\\test"),
                                  std::string("C:\\test\\"),
                                  std::string("C:\\users"),
                                  profile,
                                  profile + "\\",
                                  profile + "\\Desktop\\.."})
    ExpectRefused(path);
}

TEST_P(ShredFolders, LeaveThemWhenAnotherPathLeadsThere) {
  // The answer rests on the numbers that folders have, and the ANSI way is that of systems that give them none.
  if (ByAnsi()) GTEST_SKIP() << "folders have no numbers this way";
  const std::string profile = std::getenv("USERPROFILE");
  for (const std::string& path : {std::string("C:\\to c\\windows"), std::string("C:\\to c\\test"),
                                  std::string("C:\\to windows\\system32"), "X:" + profile.substr(profile.rfind('\\'))})
    ExpectRefused(path);
}

TEST_P(ShredFolders, RemoveAFolderBelowOneThatStays) {
  const std::string profile = std::getenv("USERPROFILE");
  for (const std::string& path :
       {std::string("C:\\windows\\some folder"), std::string("C:\\windows2"), std::string("C:\\Program Files\\some folder"),
        profile + "\\some folder", profile + "\\Desktop\\some folder", profile + "\\Documents\\some folder",
        profile + "\\Favorites\\some folder", std::string("C:\\to c\\some folder"),
        std::string("\\\\server\\share\\some folder")}) {
    MakeFile(path + "\\file.txt");
    EXPECT_TRUE(RemoveFolderTree(path)) << path;
    EXPECT_FALSE(IsThere(path)) << path;
  }
}

TEST_P(ShredFolders, ClearTheFirstSubFolderAndNoOther) {
  MakeFiles({"a\\one.gif", "a\\two.txt", "a\\three", "b\\four.txt", "c\\five.txt"});
  const Names before = NamesIn(folder.Path());
  ClearSubFolders(folder.Path());
  Names after = NamesIn(folder.Path());
  ASSERT_EQ(after.size(), 2u);
  EXPECT_EQ(after, Names(before.begin() + 1, before.end())) << "the first one in the order of the listing";
  for (const std::string& name : after) EXPECT_EQ(NamesIn(folder / name).size(), 1u) << name;
}

TEST_P(ShredFolders, PassOverFilesOnTheWayToTheFirstSubFolder) {
  MakeFiles({"a.txt", "b.txt", "sub\\file.txt", "z.txt"});
  ClearSubFolders(folder.Path() + "\\");
  EXPECT_THAT(Left(), UnorderedElementsAre("a.txt", "b.txt", "z.txt"));
}

TEST_P(ShredFolders, ClearOneLevelOfASubFolder) {
  MakeFiles({"sub\\one.txt", "sub\\inner\\two.txt"});
  ClearSubFolders(folder.Path());
  EXPECT_THAT(Left(), UnorderedElementsAre("sub", "sub\\inner", "sub\\inner\\two.txt"));
}

TEST_P(ShredFolders, KeepWhatAPlainDeletionCannotClear) {
  MakeFiles({"sub\\one.txt"});
  MakeFile(folder / "sub\\read only.txt", FILE_ATTRIBUTE_READONLY);
  ClearSubFolders(folder.Path());
  EXPECT_THAT(Left(), UnorderedElementsAre("sub", "sub\\read only.txt"));
}

TEST_P(ShredFolders, RemoveReadOnlyFolders) {
  // The ANSI way runs this: the test steps between the engine and an imported function.
  if (!ByAnsi()) GTEST_SKIP() << "the wide functions are no imports that could be replaced";
  MakeFiles({"one\\tree\\a\\b\\file.txt", "other\\sub\\file.txt"});
  madeNormal.clear();
  const ImportHook noting(importedSetFileAttributesA, &NoteWhatIsMadeNormal);
  const ImportHook removing(importedRemoveDirectoryA, &RemoveWhatIsNormal);
  EXPECT_TRUE(RemoveFolderTree(folder / "one\\tree"));
  ClearSubFolders(folder / "other");
  EXPECT_THAT(Left(), UnorderedElementsAre("one", "other"));
}

TEST_P(ShredFolders, GiveAFolderThatStaysItsAttributesBack) {
  MakeFiles({"tree\\sub\\held.txt", "tree\\sub\\inner\\file.txt"});
  const std::string sub = folder / "tree\\sub";
  for (const std::string& hidden : {sub, sub + "\\inner"}) ::SetFileAttributesA(hidden.c_str(), FILE_ATTRIBUTE_HIDDEN);
  const DWORD before = ::GetFileAttributesA(sub.c_str());
  ASSERT_NE(before & FILE_ATTRIBUTE_HIDDEN, 0u);
  {
    const UniqueFile holder(
        ::CreateFileA((sub + "\\held.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(holder);
    const ImportHook removing(importedRemoveDirectoryA, &RemoveNothing);
    ShredFolder(folder / "tree");
  }
  EXPECT_EQ(::GetFileAttributesA(sub.c_str()), before);
  // The ANSI way alone is refused here with the reason for which a folder is made normal.
  if (ByAnsi()) {
    EXPECT_EQ(::GetFileAttributesA((sub + "\\inner").c_str()), before);
  }
}

TEST_P(ShredFolders, ClearNothingWhereThereAreNoSubFolders) {
  ClearSubFolders(folder.Path());
  MakeFiles({"one.txt", "two.gif"});
  ClearSubFolders(folder.Path());
  ClearSubFolders(folder / "missing");
  ClearSubFolders(folder / "one.txt");
  EXPECT_THAT(Left(), UnorderedElementsAre("one.txt", "two.gif"));
}

TEST_P(ShredFolders, ClearASubFolderByItsEndingsInTheirOrder) {
  // The ANSI way runs this: the test steps between the engine and an imported function.
  if (!ByAnsi()) GTEST_SKIP() << "the wide deletion is no import that could be watched";
  MakeFiles({"sub\\a.swf", "sub\\b.css", "sub\\c.jpg", "sub\\d.cab", "sub\\e.htm", "sub\\f.GIF", "sub\\0.html", "sub\\1"});
  deleted.clear();
  const ImportHook hook(importedDeleteFileA, &NoteTheName);
  ClearSubFolders(folder.Path());
  ASSERT_EQ(deleted.size(), 8u);
  EXPECT_EQ(Names(deleted.begin(), deleted.begin() + 6), (Names{"f.GIF", "e.htm", "d.cab", "c.jpg", "b.css", "a.swf"}));
}

TEST_P(ShredFolders, LetEventsRunWhileSubFoldersAreCleared) {
  MakeFiles({"one.txt"});
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // gives the thread a queue
  events = 0;
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(&CountEvent));
  ClearSubFolders(folder.Path());
  EXPECT_EQ(events, 1);
}

TEST_P(ShredFolders, ShredAFolderWithAllThatIsReadOnlyInIt) {
  MakeFiles({"tree\\one.txt", "tree\\a\\two.txt", "tree\\a\\b\\three.txt", "tree\\c\\four.txt"});
  MakeFile(folder / "tree\\c\\read only.txt", FILE_ATTRIBUTE_READONLY);
  MakeFile(folder / "tree\\read only.txt", FILE_ATTRIBUTE_READONLY);
  ShredFolder(folder / "tree");
  EXPECT_THAT(Left(), IsEmpty());
}

TEST_P(ShredFolders, ShredAFolderWithoutOverwritingItsFiles) {
  const std::string file = folder.File("file.txt", "the content");
  for (const char* name : {"tree", "tree\\a", "tree\\b"}) {
    ::CreateDirectoryA((folder / name).c_str(), nullptr);
    ASSERT_TRUE(::CreateHardLinkA((folder / name + "\\file.txt").c_str(), file.c_str(), nullptr));
  }
  ShredFolder(folder / "tree\\");
  EXPECT_THAT(Left(), ElementsAre("file.txt"));
  EXPECT_EQ(ReadWhole(file), "the content");
}
