// The procedures that the cleaners of Netscape and Mozilla are made of, by wide names and by ANSI names, and those cleaners
// on hostile folders, which come from netscape_walks_prepare.py: it also looks at the disk afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "cleaners/NetScapeEraser.h"
#include "cleaners/wipe_state.h"
#include "import_hook.h"
#include "log_recorder.h"
#include "nothing_pending.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "scratch_folder.h"
#include "scratch_key.h"
#include "second_name.h"
#include "shell_folders.h"
#include "window_event.h"

using namespace cleaners;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

class NetscapeWalks : public ByEitherNames {
 protected:
  void SetUp() override {
    ByEitherNames::SetUp();
    ::SetCurrentDirectoryA(folder.Path().c_str());
  }

  void TearDown() override {
    ByEitherNames::TearDown();
    EXPECT_EQ(log.Lines(), LogLines());
  }

  std::string Planted(const std::string& name) const { return "C:\\plant\\" + std::string(GetParam()) + "\\" + name; }

  void PutFiles(const Names& names) const {
    for (const std::string& name : names) folder.File(name);
  }

  // What a search appends, as paths below the scratch folder.
  Names Found(const std::string& root, const std::string& names) const {
    FileList results(1);
    FindFilesByName(At(root), Widen(names), results);
    return Below(results);
  }
  Names FoundFolders(const std::string& root, const std::string& name) const {
    FileList results(1);
    FindFoldersByName(At(root), Widen(name), results);
    return Below(results);
  }

  static void RunAll() {
    NSTypedUrl();
    CleanNetscapeMail();
    CleanNescapeCache();
  }
  template <class Text>
  void RunAllOn(const Text& profile) const {
    shell.Move(kProfileFolder, profile);
    RunAll();
  }

  const ShellFolders shell;
  const ScratchFolder folder;
  const LogRecorder log;
  const WindowEvents events;

 private:
  Names Below(const FileList& results) const {
    EXPECT_EQ(results.at(0), Path()) << "the first element stays empty";
    Names names;
    for (std::size_t index = 1; index < results.size(); ++index) {
      const std::string shown = TextOf(results[index]);
      EXPECT_TRUE(shown.starts_with(folder.Path() + "\\")) << shown;
      names.push_back(shown.substr(folder.Path().size() + 1));
    }
    return names;
  }
};

// The two programs that the registry tells a profile of, each told to have it in PLACE\Users\joe.
class RegisteredProfiles : public NetscapeWalks {
 protected:
  void RegisterAt(const std::string& program, const std::string& place, const std::string& end) const {
    netscape.Remove();
    if (program == "communicator") {
      netscape.PutText("CurrentUser", "joe", "Netscape Navigator\\Users");
      netscape.PutText("DirRoot", place + "\\Users\\joe" + end, "Netscape Navigator\\Users\\joe");
    } else {
      netscape.PutText("CurrentUser", "joe", "Netscape Navigator\\biff");
      netscape.PutText("Install Directory", place + "\\Communicator" + end, "Netscape Navigator\\Main");
    }
  }

  // All three cleaners on the profile PLANTED\Users\joe, for each way to write its folder.
  void RunAllOnRegistered(const std::string& program, const std::string& planted) const {
    for (const char* end : {"", "\\", "\\\\", "\\.", "\\mail\\.."}) {
      RegisterAt(program, Planted(planted), end);
      RunAll();
    }
  }

  const ScratchKey netscape{"Software\\Netscape", HKEY_LOCAL_MACHINE};
};

constexpr const char* kPrograms[] = {"communicator", "netscape 6"};
constexpr const char* kTargets[] = {"FieldSchema.tbl", "mail\\trash", "mail\\trash.nsm", "cache\\x"};

const auto ways = testing::ValuesIn(WaysOfNames());

using FindFiles = NetscapeWalks;
using FindFolders = NetscapeWalks;
using DeletingAFile = NetscapeWalks;
using ClearingADirectory = NetscapeWalks;
INSTANTIATE_TEST_SUITE_P(Names, NetscapeWalks, ways, NameOfWay);
INSTANTIATE_TEST_SUITE_P(Names, RegisteredProfiles, ways, NameOfWay);
INSTANTIATE_TEST_SUITE_P(Names, FindFiles, ways, NameOfWay);
INSTANTIATE_TEST_SUITE_P(Names, FindFolders, ways, NameOfWay);
INSTANTIATE_TEST_SUITE_P(Names, DeletingAFile, ways, NameOfWay);
INSTANTIATE_TEST_SUITE_P(Names, ClearingADirectory, ways, NameOfWay);

// Of the timer procedure: the folder that it looks at and what it found there.
std::string watched;
std::size_t leftAtTheStop;

// Its first call may come before the first deletion; the next one then leaves time for it, however long the look took.
void CALLBACK StopWhenSomethingIsGone(HWND, UINT, UINT_PTR timer, DWORD) {
  if (StopErase) return;
  leftAtTheStop = NamesBelow(watched).size();
  StopErase = leftAtTheStop < 2020;  // with the twenty subfolders
  if (!StopErase) ::SetTimer(nullptr, timer, 10, &StopWhenSomethingIsGone);
}

const auto systemWriteFile = importedWriteFile;
int writes;

BOOL WINAPI CountTheWrite(HANDLE file, LPCVOID bytes, DWORD size, DWORD* done, OVERLAPPED* overlapped) {
  ++writes;
  return systemWriteFile(file, bytes, size, done, overlapped);
}

const Names kNoFolders = {"",
                          " ",
                          "\\",
                          "/",
                          ".",
                          "..",
                          "...",
                          "inner",
                          "inner\\",
                          "C:",
                          "C:\\",
                          "c:\\\\",
                          "C:.",
                          "C:inner",
                          "C:\\.",
                          "C:\\test\\..",
                          "\\test\\scratch",
                          "C:/test/scratch",
                          "Q:\\",
                          "\\\\server\\share",
                          "\\\\?\\C:\\test\\scratch",
                          "C:\\missing",
                          "C:\\test\\scratch\\trash",
                          "C:\\test\\scratch\\*",
                          "C:\\test\\...\\scratch"};

}  // namespace

TEST_P(FindFiles, AppendsEveryFileBelowWhoseNameOccursInTheListsText) {
  PutFiles(
      {"trash", "a\\TRASH", "a\\b\\Trash.msf", "a\\b\\c\\ash", "a\\trash.nsm", "a\\trashed", "Inbox", "t", "trash2\\x"});
  EXPECT_THAT(Found(folder.Path(), "trash trash.msf"),
              UnorderedElementsAre("trash", "a\\TRASH", "a\\b\\Trash.msf", "a\\b\\c\\ash", "t"));
}

TEST_P(FindFiles, AppendsNoFolderOfSuchAName) {
  PutFiles({"trash\\x", "a\\trash.msf\\trash"});
  EXPECT_THAT(Found(folder.Path(), "trash trash.msf"), ElementsAre("a\\trash.msf\\trash"));
}

TEST_P(FindFiles, KeepsWhatTheListHolds) {
  PutFiles({"trash"});
  FileList results = {Path(), At("C:\\one"), At("C:\\two")};
  FindFilesByName(At(folder.Path()), L"trash", results);
  ASSERT_EQ(results.size(), 4u);
  EXPECT_EQ(results, (FileList{Path(), At("C:\\one"), At("C:\\two"), At(folder / "trash")}));
}

TEST_P(FindFiles, TakesTheRootWithOrWithoutABackslash) {
  PutFiles({"trash"});
  for (const char* end : {"", "\\", "\\\\", "\\.", "\\a\\.."})
    EXPECT_THAT(Found(folder.Path() + end, "trash"), ElementsAre("trash")) << end;
}

TEST_P(FindFiles, FindsNothingBelowARootThatIsNoFolder) {
  PutFiles({"trash", "inner\\trash"});
  for (const std::string& root : kNoFolders) EXPECT_THAT(Found(root, "trash"), IsEmpty()) << '"' << root << '"';
}

TEST_P(FindFiles, FindsHiddenAndReadOnlyFiles) {
  PutFiles({"a\\trash", "b\\trash"});
  ::SetFileAttributesA((folder / "a\\trash").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  ::SetFileAttributesA((folder / "b").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
  EXPECT_THAT(Found(folder.Path(), "trash"), UnorderedElementsAre("a\\trash", "b\\trash"));
}

TEST_P(FindFiles, LetsEventsRunAndEndsWithAStop) {
  for (int number = 0; number < 100; ++number) folder.File(std::to_string(number) + "\\trash");
  events.AtTheNext([] { StopErase = true; });
  LetTheNextLookBeDue();
  EXPECT_LT(Found(folder.Path(), "trash").size(), 100u);
  EXPECT_TRUE(events.HasRun());
  EXPECT_THAT(Found(folder.Path(), "trash"), IsEmpty());
}

TEST_P(FindFolders, AppendsEveryFolderBelowOfThatNameInAnyCase) {
  PutFiles({"cache\\x", "a\\CACHE\\x", "a\\b\\c\\Cache\\cache\\x", "cache2\\x", "my cache\\x", "cach\\x", "b\\cache"});
  EXPECT_THAT(FoundFolders(folder.Path(), "cache"),
              UnorderedElementsAre("cache", "a\\CACHE", "a\\b\\c\\Cache", "a\\b\\c\\Cache\\cache"));
  EXPECT_THAT(FoundFolders(folder.Path(), "CaChE").size(), 4u);
}

TEST_P(FindFolders, LeavesOutTheRootItself) {
  PutFiles({"cache\\x"});
  EXPECT_THAT(FoundFolders(folder / "cache", "cache"), IsEmpty());
  EXPECT_THAT(FoundFolders(folder.Path(), "scratch"), IsEmpty());
}

TEST_P(FindFolders, LeavesOutLinks) {
  FileList results(1);
  FindFoldersByName(At(Planted("links")), L"cache", results);
  EXPECT_EQ(results.size(), 3u) << "of abc.slt and zz";
  for (const Path& found : results) EXPECT_FALSE(IsLink(NativeAttributes(found))) << TextOf(found);
}

TEST_P(FindFolders, FindsNothingBelowARootThatIsNoFolder) {
  PutFiles({"trash", "inner\\cache\\x", "cache\\x"});
  for (const std::string& root : kNoFolders) EXPECT_THAT(FoundFolders(root, "cache"), IsEmpty()) << '"' << root << '"';
}

TEST_P(FindFolders, LetsEventsRunAndEndsWithAStop) {
  for (int number = 0; number < 100; ++number) folder.File(std::to_string(number) + "\\cache\\x");
  events.AtTheNext([] { StopErase = true; });
  LetTheNextLookBeDue();
  EXPECT_LT(FoundFolders(folder.Path(), "cache").size(), 100u);
  EXPECT_TRUE(events.HasRun());
}

TEST_P(DeletingAFile, DeletesWithoutOverwritingForNoPasses) {
  ASSERT_EQ(WipePasses, 0) << "the passes of every cleaner";
  for (const std::int16_t passes : {WipePasses, std::int16_t{-1}}) {
    const std::string file = folder.File("file", "the content");
    GiveSecondName(file, folder / "second");
    DeleteFile(PathOf(Widen(file)), passes);
    EXPECT_FALSE(IsThere(file));
    EXPECT_EQ(ReadWhole(folder / "second"), "the content");
    ::DeleteFileA((folder / "second").c_str());
  }
}

TEST_P(DeletingAFile, OverwritesEveryByteBeforeItDeletes) {
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{1, 3}) {
    for (const std::size_t size : {1u, 1023u, 1024u, 1025u, 2048u, 2500u, 100000u}) {
      const std::string file = folder.File("file", std::string(size, 'x'));
      GiveSecondName(file, folder / "second");
      DeleteFile(PathOf(Widen(file)), passes);
      EXPECT_FALSE(IsThere(file));
      const std::string bytes = ReadWhole(folder / "second");
      EXPECT_EQ(bytes.size(), size);
      EXPECT_TRUE(IsOverwritten(bytes)) << size << " bytes, " << passes << " passes: " << bytes.substr(0, 40);
      ::DeleteFileA((folder / "second").c_str());
    }
  }
}

TEST_P(DeletingAFile, DeletesAnEmptyOneAfterAPass) {
  const std::string file = folder.File("file", "");
  DeleteFile(PathOf(Widen(file)), 1);
  EXPECT_FALSE(IsThere(file));
}

TEST_P(DeletingAFile, DoesNothingForWhatIsNoFile) {
  PutFiles({"file", "inner\\file"});
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{0, 1}) {
    for (const std::string path : {"missing", "inner", "inner\\", "*", "fil?", "", ".", "...", "inner\\..."})
      DeleteFile(PathOf(Widen(path)), passes);
    DeleteFile(Path(), passes);
  }
  EXPECT_THAT(NamesBelow(folder.Path()), UnorderedElementsAre("file", "inner", "inner\\file"));
}

TEST_P(DeletingAFile, LeavesOneThatIsInUseOrReadOnly) {
  const std::string used = folder.File("used", "the content");
  const std::string readOnly = folder.File("read only", "the content");
  ::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
  const UniqueFile holder(::CreateFileA(used.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  for (const std::int16_t passes : std::initializer_list<std::int16_t>{0, 2}) {
    DeleteFile(PathOf(Widen(used)), passes);
    EXPECT_EQ(ReadWhole(used), "the content") << passes << " passes";
  }
  DeleteFile(PathOf(Widen(readOnly)), 0);
  EXPECT_EQ(ReadWhole(readOnly), "the content");
}

TEST_P(DeletingAFile, DeletesHiddenOnesOfTheSystem) {
  const std::string file = folder.File("file");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  DeleteFile(PathOf(Widen(file)), 0);
  EXPECT_FALSE(IsThere(file));
}

TEST_P(DeletingAFile, KeepsItAfterAStopThatComesDuringAPass) {
  const std::string file = folder.File("file", std::string(4096, 'x'));
  events.AtTheNext([] { StopErase = true; });
  LetTheNextLookBeDue();
  writes = 0;
  {
    const ImportHook hook(importedWriteFile, &CountTheWrite);
    DeleteFile(PathOf(Widen(file)), 100);
  }
  EXPECT_TRUE(events.HasRun()) << "events run after each block";
  EXPECT_EQ(writes, 4) << "the pass comes to its end, and no other one follows";
  EXPECT_TRUE(IsOverwritten(ReadWhole(file)));
  EXPECT_EQ(ReadWhole(file).size(), 4096u);
  DeleteFile(PathOf(Widen(file)), 0);
  EXPECT_TRUE(IsThere(file)) << "asked to stop before it began";
}

TEST_P(ClearingADirectory, DeletesWhatIsInItToAnyDepthAndKeepsIt) {
  PutFiles({"cache\\x", "cache\\a\\x", "cache\\a\\b\\c\\x", "cache\\z", "beside"});
  ::CreateDirectoryA((folder / "cache\\empty").c_str(), nullptr);
  for (const char* end : {"", "\\"}) {
    ClearDirectory(At(folder / "cache" + end));
    EXPECT_THAT(NamesBelow(folder.Path()), UnorderedElementsAre("cache", "beside"));
    PutFiles({"cache\\x", "cache\\a\\x"});
  }
}

TEST_P(ClearingADirectory, OverwritesWhatIsInItAsOftenAsAskedFor) {
  WipePasses = 1;
  GiveSecondName(folder.File("cache\\a\\x", std::string(2500, 'x')), folder / "second");
  ClearDirectory(At(folder / "cache"));
  WipePasses = 0;
  EXPECT_THAT(NamesBelow(folder / "cache"), IsEmpty());
  EXPECT_TRUE(IsOverwritten(ReadWhole(folder / "second")));
}

TEST_P(ClearingADirectory, RefusesWhatIsNoFolderBelowARoot) {
  PutFiles({"trash", "inner\\x"});
  const Names before = NamesBelow(folder.Path());
  for (const std::string& path : kNoFolders) {
    ClearDirectory(At(path));
    ASSERT_EQ(NamesBelow(folder.Path()), before) << '"' << path << '"';
    ASSERT_TRUE(IsThere(std::string("C:\\outside\\") + GetParam() + "\\canary.txt")) << '"' << path << '"';
  }
}

TEST_P(ClearingADirectory, GoesOnPastWhatIsInUseOrReadOnlyAndKeepsTheFoldersOfThose) {
  PutFiles({"cache\\a\\used", "cache\\a\\x", "cache\\b\\read only", "cache\\b\\x", "cache\\c\\x", "cache\\z"});
  ::SetFileAttributesA((folder / "cache\\b\\read only").c_str(), FILE_ATTRIBUTE_READONLY);
  ::SetFileAttributesA((folder / "cache\\z").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  const UniqueFile holder(
      ::CreateFileA((folder / "cache\\a\\used").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  ClearDirectory(At(folder / "cache"));
  EXPECT_THAT(NamesBelow(folder / "cache"), UnorderedElementsAre("a", "a\\used", "b", "b\\read only"));
}

TEST_P(ClearingADirectory, DeletesNothingFurtherAfterAStopInTheMiddle) {
  for (int number = 0; number < 2000; ++number)
    folder.File("cache\\" + std::to_string(number % 20) + "\\" + std::to_string(number));
  watched = folder / "cache";
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &StopWhenSomethingIsGone);
  ClearDirectory(At(watched));
  ::KillTimer(nullptr, timer);
  ASSERT_TRUE(StopErase) << "all was gone before the timer was looked at";
  EXPECT_GT(leftAtTheStop, 0u);
  EXPECT_EQ(NamesBelow(watched).size(), leftAtTheStop);
}

TEST_P(NetscapeWalks, NeverFollowALink) { RunAllOn(Planted("links")); }

TEST_P(NetscapeWalks, LeaveARootAloneThatIsALink) {
  RunAllOn(Planted("root is a link"));
  EXPECT_TRUE(IsThere(Planted("root is a link\\Application Data\\Mozilla\\Profiles\\trash")));
}

TEST_P(NetscapeWalks, LeaveTheCacheFolderOfCommunicatorAloneWhenItIsALink) {
  const ScratchKey netscape("Software\\Netscape", HKEY_LOCAL_MACHINE);
  netscape.PutText("CurrentUser", "joe", "Netscape Navigator\\Users");
  netscape.PutText("DirRoot", Planted("communicator"), "Netscape Navigator\\Users\\joe");
  CleanNescapeCache();
  ClearDirectory(At(Planted("communicator\\cache")));
  ClearDirectory(At(Planted("communicator\\cache\\")));
  EXPECT_TRUE(IsThere(Planted("communicator\\cache\\canary.txt")));
}

TEST_P(RegisteredProfiles, AreLeftAloneWhenTheyAreLinks) {
  for (const std::string program : kPrograms) {
    RunAllOnRegistered(program, "profile of " + program);
    for (const std::string target : kTargets)
      EXPECT_TRUE(IsThere(Planted("profile of " + program + "\\Users\\joe\\" + target))) << program << ": " << target;
  }
}

TEST_P(RegisteredProfiles, LoseNothingOfAMailFolderThatIsALink) {
  for (const std::string program : kPrograms) {
    const std::string profile = Planted("mail of " + program) + "\\Users\\joe\\";
    RunAllOnRegistered(program, "mail of " + program);
    EXPECT_TRUE(IsThere(profile + "mail\\trash")) << program;
    EXPECT_TRUE(IsThere(profile + "mail\\trash.nsm")) << program;
    EXPECT_FALSE(IsThere(profile + "FieldSchema.tbl")) << program << ": what is beside the link goes";
  }
}

TEST_P(RegisteredProfiles, AreReachedByALinkAboveThem) {
  for (const std::string program : kPrograms) {
    const std::string profile = Planted("users of " + program) + "\\Users\\joe\\";
    ASSERT_TRUE(IsThere(profile + "FieldSchema.tbl")) << program;
    RunAllOnRegistered(program, "users of " + program);
    for (const std::string target : kTargets) EXPECT_FALSE(IsThere(profile + target)) << program << ": " << target;
    EXPECT_TRUE(IsThere(profile + "bookmark.htm")) << program;
  }
}

TEST_P(NetscapeWalks, ReachAProfileFolderOutsideTheCodePageByWideNames) {
  const std::wstring profile = std::wstring(ByAnsi() ? L"C:\\plant\\ansi" : L"C:\\plant\\wide") + L"\\\u0416\u0436";
  const std::wstring table = profile + L"\\Application Data\\Mozilla\\Profiles\\default\\FieldSchema.tbl";
  ASSERT_NE(::GetFileAttributesW(table.c_str()), INVALID_FILE_ATTRIBUTES);
  RunAllOn(profile);
  EXPECT_EQ(::GetFileAttributesW(table.c_str()) != INVALID_FILE_ATTRIBUTES, ByAnsi());
}

// By ANSI names a listing gives the short name alone where the long one would leave no room for it.
TEST_P(NetscapeWalks, TakeATableInAFolderOfSoManyCharactersThatItIsReachedByItsShortName) {
  const std::string root = "Application Data\\Mozilla\\Profiles\\";
  for (const std::size_t length : {230u, 231u, 233u, 240u}) {
    const std::string deep = root + std::string(length - (folder / root).size(), 'x');
    const std::string table = folder.File(deep + "\\FieldSchema.tbl");
    ASSERT_EQ(table.size(), length + 16);
    ASSERT_TRUE(IsThere(table)) << length;
    RunAllOn(folder.Path());
    EXPECT_FALSE(IsThere(table)) << length;
  }
}

TEST_P(NetscapeWalks, ReachNamesOutsideTheCodePageAndTakeNoneForWhatItLooksLike) {
  RunAllOn(Planted("names"));
  EXPECT_FALSE(
      IsThere(Planted("names\\Application Data\\Mozilla\\Profiles\\\xDCn\xEF"
                      "c\xF6"
                      "d\xE9\\Value.tbl")));
}

TEST_P(NetscapeWalks, GoDown200Levels) {
  RunAllOn(Planted("deep"));
  // 259 characters end above the ground.
  EXPECT_EQ(IsThere(Planted("deep\\Application Data\\Mozilla\\Profiles\\top\\Cache\\level")), ByAnsi());
}
