// The folder walk against hostile folders, by wide names and by ANSI names. What only another system can plant, links above
// all, comes from folder_contents_prepare.py, which also looks at the disk afterwards.
#include "cleaners/folder_contents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

#include "ansi_paths.h"
#include "counted_memory.h"
#include "exchange.h"
#include "log_recorder.h"
#include "platform/native_files.h"
#include "platform/stop_request.h"
#include "ways_of_names.h"
#include "window_event.h"

using namespace cleaners;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Names = std::vector<std::string>;

std::wstring Exact(const std::string& path) { return L"\\\\?\\" + std::wstring(path.begin(), path.end()); }

std::string Readable(const std::wstring& name) {
  std::string text;
  for (const wchar_t c : name) text += c < 127 ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">";
  return text;
}

// Everything below a folder, by what the program under test does not use itself. A link is named and not entered.
void Collect(const std::wstring& folder, const std::string& above, Names& names) {
  WIN32_FIND_DATAW found;
  const UniqueFind find(::FindFirstFileW((folder + L"\\*").c_str(), &found));
  if (!find) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    names.push_back(above + Readable(name));
    const DWORD kind = found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    if (kind == FILE_ATTRIBUTE_DIRECTORY) Collect(folder + L"\\" + name, names.back() + "\\", names);
  } while (::FindNextFileW(find.get(), &found));
}

Names Everything(const std::string& folder) {
  Names names;
  Collect(Exact(folder), "", names);
  std::sort(names.begin(), names.end());
  return names;
}

bool Exists(const std::string& path) { return ::GetFileAttributesW(Exact(path).c_str()) != INVALID_FILE_ATTRIBUTES; }

void MakeFolders(const std::string& path) {
  for (std::size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1))
    ::CreateDirectoryW(Exact(path.substr(0, end)).c_str(), nullptr);
  ::CreateDirectoryW(Exact(path).c_str(), nullptr);
}

UniqueFile MakeFile(const std::string& path, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
  MakeFolders(path.substr(0, path.rfind('\\')));
  UniqueFile file(::CreateFileW(Exact(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr));
  EXPECT_TRUE(file) << path << " cannot be made, system error " << ::GetLastError();
  return file;
}

void MakeFiles(const std::string& folder, const Names& names) {
  for (const std::string& name : names) MakeFile(folder + "\\" + name);
}

void MakeNumberedFiles(const std::string& folder, int count) {
  for (int number = 0; number < count; ++number) MakeFile(folder + "\\file" + std::to_string(10000 + number));
}

// Of the timer procedure below: the folder it looks at and what it found there.
std::string watched;
std::size_t leftAtTheStop;
constexpr std::size_t kManyFiles = 2000;

// Its first call may come before the first deletion; the next one then leaves time for it, however long the look took.
void CALLBACK StopAndCount(HWND, UINT, UINT_PTR timer, DWORD) {
  if (StopErase) return;
  leftAtTheStop = Everything(watched).size();
  StopErase = leftAtTheStop < kManyFiles;
  if (!StopErase) ::SetTimer(nullptr, timer, 10, &StopAndCount);
}

UINT_PTR watch;
bool wentOn;

void CALLBACK NoteThatItWentOn(HWND, UINT, UINT_PTR, DWORD) { wentOn = true; }

void CALLBACK StopAndWatch(HWND, UINT, UINT_PTR timer, DWORD) {
  StopErase = true;
  ::KillTimer(nullptr, timer);
  watch = ::SetTimer(nullptr, 0, 100, &NoteThatItWentOn);
}

// As the cleaner of the temporary folder hands it over.
void ClearFolderContents(const std::string& folder, bool removeFolder, bool removeSubFolders) {
  cleaners::ClearFolderContents(At(folder), removeFolder, removeSubFolders);
}

class FolderContents : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    AnsiNamesOnlyForTests = ByAnsi();
    StopErase = false;
    const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    place_ = "C:\\made\\" + std::string(GetParam()) + "\\" + test.substr(0, test.find('/'));
    outside_ = Everything(Outside());
  }

  void TearDown() override {
    AnsiNamesOnlyForTests = false;
    StopErase = false;
    LogCleanResult = &RecordNothing;
    EXPECT_EQ(Everything(Outside()), outside_) << "the walk left its folder";
  }

  bool ByAnsi() const { return GetParam() == std::string("ansi"); }
  std::string Outside() const { return "C:\\outside\\" + std::string(GetParam()); }
  std::string Planted(const std::string& name) const { return "C:\\plant\\" + std::string(GetParam()) + "\\" + name; }
  const std::string& Place() const { return place_; }

  void Clear() const { ClearFolderContents(place_, false, true); }

  // A folder below it becomes a link by an event in the middle of the walk.
  void ExchangeAfterTheFirstFolder(const std::string& what) const {
    swap = "C:\\swap\\" + std::string(GetParam()) + "\\" + what;
    queued = &events;
    LogCleanResult = [](WideView, WideView) {
      LogCleanResult = &RecordNothing;
      queued->AtTheNext([] { ExchangeForALink(swap); });
      LetTheNextLookBeDue();
    };
  }
  static const std::string& Swap() { return swap; }

  const WindowEvents events;
  static inline std::string swap;
  static inline const WindowEvents* queued;

 private:
  std::string place_;
  Names outside_;
};

INSTANTIATE_TEST_SUITE_P(Names, FolderContents, testing::ValuesIn(WaysOfNames()), NameOfWay);

}  // namespace

TEST_P(FolderContents, RemovesEveryLevelAndKeepsTheFolderItself) {
  MakeFiles(Place(), {"top.txt", "a\\one.txt", "a\\b\\two.txt", "a\\b\\c\\three.txt", "z\\last.txt"});
  MakeFolders(Place() + "\\empty\\emptier");
  Clear();
  EXPECT_THAT(Everything(Place()), IsEmpty());
  EXPECT_TRUE(Exists(Place()));
}

TEST_P(FolderContents, TakesTheFolderWithOrWithoutABackslash) {
  MakeFiles(Place(), {"a\\one.txt"});
  ClearFolderContents(Place() + "\\", true, true);
  EXPECT_FALSE(Exists(Place()));
}

TEST_P(FolderContents, RemovesTheFoldersThatItsTwoSwitchesName) {
  const std::string top = Place() + "\\top";
  const Names folders = {"a", "a\\b"};
  MakeFiles(top, {"x.txt", "a\\x.txt", "a\\b\\x.txt"});
  ClearFolderContents(top, false, false);
  EXPECT_EQ(Everything(top), folders) << "neither";
  ClearFolderContents(top, true, false);
  EXPECT_EQ(Everything(top), folders) << "the folder itself, which is not empty";
  ClearFolderContents(top, false, true);
  EXPECT_THAT(Everything(Place()), ElementsAre("top")) << "the subfolders";
  MakeFiles(top, {"x.txt"});
  ClearFolderContents(top, true, false);
  EXPECT_FALSE(Exists(top)) << "the folder itself, which has no subfolders";
  MakeFiles(top, {"a\\b\\x.txt"});
  ClearFolderContents(top, true, true);
  EXPECT_FALSE(Exists(top)) << "all";
  EXPECT_TRUE(Exists(Place()));
}

TEST_P(FolderContents, LogsTheFoldersItRemovesFromTheInsideOutWithTheTime) {
  MakeFiles(Place(), {"a\\b\\x.txt", "c\\x.txt"});
  const LogRecorder log;
  ClearFolderContents(Place(), true, true);
  const std::string top = Place() + "\\";
  EXPECT_THAT(log.Stamped(), ElementsAre(LogLine{top + "a\\b\\ Erased", "(stamp)"}, LogLine{top + "a\\ Erased", "(stamp)"},
                                         LogLine{top + "c\\ Erased", "(stamp)"}, LogLine{top + " Erased", "(stamp)"}));
}

TEST_P(FolderContents, NeverEntersALinkToAFolder) {
  ClearFolderContents(Planted("links"), true, true);
  for (const std::string& left : Everything(Planted("links")))
    EXPECT_EQ(left.find(".txt"), std::string::npos) << left << " is an ordinary file of the folder";
  EXPECT_TRUE(Exists("C:\\windows\\system32")) << "the link to the root was followed";
}

TEST_P(FolderContents, RefusesAFolderThatIsALink) {
  ClearFolderContents(Planted("root"), true, true);
  ClearFolderContents(Planted("root\\"), true, true);
  EXPECT_TRUE(Exists(Planted("root")));
}

// The log tells of the first folder that was removed; the link comes with the next event.
TEST_P(FolderContents, LeavesAFolderAloneThatBecameALinkAfterItWasListed) {
  ExchangeAfterTheFirstFolder("listed");
  ClearFolderContents(Swap() + "\\tree", false, true);
  EXPECT_THAT(Everything(Swap() + "\\tree"), ElementsAre("b"));
}

TEST_P(FolderContents, DeletesNothingFurtherInAFolderThatBecameALinkAfterItWasEntered) {
  ExchangeAfterTheFirstFolder("entered");
  ClearFolderContents(Swap() + "\\tree", false, true);
  EXPECT_THAT(Everything(Swap() + "\\tree"), ElementsAre("b"));
  EXPECT_LT(Everything(Swap() + "\\moved away").size(), 80u) << "nothing was deleted before";
}

TEST_P(FolderContents, LeavesTheTargetOfALinkThatTookThePlaceOfAFolderItHasEmptied) {
  ExchangeAfterTheFirstFolder("emptied");
  ClearFolderContents(Swap() + "\\tree", false, true);
  EXPECT_TRUE(Exists(Outside() + "\\empty"));
}

TEST_P(FolderContents, ClearsNothingThatALinkAboveItLeadsToMeanwhile) {
  // Runs in the row of the wide names: where only the ANSI ones are, nothing could put a link there.
  if (ByAnsi()) GTEST_SKIP() << "Windows 9x has no links";
  swap = "C:\\swap\\wide\\above";
  events.AtTheNext([] { ExchangeForALink(swap); });
  ClearFolderContents(Swap() + "\\above\\tree", true, true);
  EXPECT_TRUE(events.HasRun());
  EXPECT_TRUE(Exists(Outside() + "\\above\\tree\\canary.txt"));
}

TEST_P(FolderContents, IsNotLedOutOfItsFolderByTheNamesInIt) {
  const Names beside = {"canary.txt", "kept", "kept\\canary.txt"};
  ClearFolderContents(Planted("traps\\inner"), false, true);
  Names left = Everything(Planted("traps"));
  std::erase_if(left, [](const std::string& name) { return name.rfind("inner", 0) == 0; });
  EXPECT_EQ(left, beside);
}

TEST_P(FolderContents, RemovesEveryNameThatTheFileSystemHolds) {
  ClearFolderContents(Planted("names"), false, true);
  if (!ByAnsi()) {
    EXPECT_THAT(Everything(Planted("names")), IsEmpty());
    return;
  }
  // Devices for the ANSI functions, and two characters that become one and have no short name.
  EXPECT_THAT(Everything(Planted("names")),
              ElementsAre("files", "files\\COM1", "files\\CON", "files\\LPT1.txt", "files\\NUL.txt", "files\\e<769>",
                          "files\\prn", "folders", "folders\\COM1", "folders\\CON", "folders\\LPT1.txt", "folders\\NUL.txt",
                          "folders\\e<769>", "folders\\e<769>\\inner.txt", "folders\\prn"));
}

// As long as the file systems of the machine under Wine let a path be.
TEST_P(FolderContents, TakesMemoryByTheLevelsOfADeepTreeAndNotByTheirPaths) {
  // Runs in the row of the wide names: the ANSI ones end at 259 characters.
  if (ByAnsi()) GTEST_SKIP() << "no path is that long";
  const CountedMemory memory;
  ClearFolderContents(Planted("long tower"), true, true);
  EXPECT_FALSE(Exists(Planted("long tower")));
  EXPECT_LT(memory.Most(), 120000u) << "bytes, for 60 levels whose paths take 240,000";
}

TEST_P(FolderContents, KeepsReadOnlyFilesAndRemovesHiddenAndSystemOnes) {
  MakeFile(Place() + "\\a\\hidden.txt", FILE_ATTRIBUTE_HIDDEN);
  MakeFile(Place() + "\\a\\read only.txt", FILE_ATTRIBUTE_READONLY);
  MakeFile(Place() + "\\a\\system.txt", FILE_ATTRIBUTE_SYSTEM);
  MakeFile(Place() + "\\b\\all.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
  MakeFile(Place() + "\\c\\read only and hidden.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
  MakeFiles(Place(), {"a\\zz.txt", "c\\zz.txt", "d\\zz.txt"});
  ::SetFileAttributesA((Place() + "\\d").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  const LogRecorder log;
  Clear();
  EXPECT_THAT(Everything(Place()), ElementsAre("a", "a\\read only.txt", "c", "c\\read only and hidden.txt"));
  EXPECT_THAT(log.Lines(), testing::Contains(LogLine{Place() + "\\a\\read only.txt", "Permission denied"}));
}

TEST_P(FolderContents, GoesOnPastAFileThatIsInUse) {
  MakeFiles(Place(), {"a\\before.txt", "a\\zz.txt", "b\\x.txt", "zz.txt"});
  const UniqueFile locked = MakeFile(Place() + "\\a\\locked.txt");
  const LogRecorder log;
  Clear();
  EXPECT_THAT(Everything(Place()), ElementsAre("a", "a\\locked.txt"));
  EXPECT_THAT(log.Lines(), testing::Contains(LogLine{Place() + "\\a\\locked.txt", "Permission denied"}));
}

TEST_P(FolderContents, GoesOnPastAFolderThatCannotBeRemoved) {
  MakeFiles(Place(), {"a\\x.txt", "current\\x.txt", "held\\x.txt", "z\\x.txt"});
  MakeFile(Place() + "\\keeps\\read only.txt", FILE_ATTRIBUTE_READONLY);
  ::SetCurrentDirectoryA((Place() + "\\current").c_str());
  const UniqueFile held(::CreateFileW(Exact(Place() + "\\held").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  ASSERT_TRUE(held);
  ClearFolderContents(Place(), true, true);
  ::SetCurrentDirectoryA("C:\\");
  EXPECT_THAT(Everything(Place()), ElementsAre("current", "held", "keeps", "keeps\\read only.txt"));
}

TEST_P(FolderContents, EndsWhenItsFilesVanishUnderIt) {
  MakeNumberedFiles(Place(), 1000);
  for (const char* folder : {"\\q", "\\r", "\\s", "\\t"}) MakeNumberedFiles(Place() + folder, 100);
  std::thread other([place = Place()] {
    for (const std::string folder : {"\\t", "\\s", "\\r", "\\q", ""}) {
      for (int number = 1000; number-- > 0;)
        ::DeleteFileA((place + folder + "\\file" + std::to_string(10000 + number)).c_str());
      if (!folder.empty()) ::RemoveDirectoryA((place + folder).c_str());
    }
  });
  Clear();
  other.join();
  EXPECT_THAT(Everything(Place()), IsEmpty());
}

TEST_P(FolderContents, EndsWhileFilesAreBeingMadeInIt) {
  MakeNumberedFiles(Place() + "\\m", 300);
  std::atomic<bool> enough = false;
  std::thread other([place = Place(), &enough] {
    const DWORD start = ::GetTickCount();
    for (int number = 0; !enough && ::GetTickCount() - start < 3000; ++number) {
      ::CreateDirectoryA((place + "\\m").c_str(), nullptr);
      const std::string path = place + (number % 2 == 0 ? "\\m\\new" : "\\new") + std::to_string(number);
      UniqueFile(::CreateFileA(path.c_str(), GENERIC_WRITE, 7, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
  });
  for (int round = 0; round < 5; ++round) Clear();
  enough = true;
  other.join();
  Clear();
  EXPECT_THAT(Everything(Place()), IsEmpty());
}

TEST_P(FolderContents, StopsAtOnceWhenAnEventAsksForIt) {
  const std::string folder = Place() + "\\files";
  MakeNumberedFiles(folder, kManyFiles);
  watched = folder;
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &StopAndCount);
  ClearFolderContents(folder, true, true);
  ::KillTimer(nullptr, timer);
  ASSERT_TRUE(StopErase) << "all files were gone before a timer of 10 ms was looked at";
  EXPECT_THAT(Everything(folder), SizeIs(leftAtTheStop)) << "files were deleted after the stop";
}

TEST_P(FolderContents, RemovesNoFolderAfterTheStop) {
  MakeFiles(Place(), {"a\\b\\x.txt", "a\\y.txt", "c\\x.txt", "z.txt"});
  LogCleanResult = [](WideView, WideView) { StopErase = true; };
  ClearFolderContents(Place(), true, true);
  EXPECT_THAT(Everything(Place()), ElementsAre("a", "a\\y.txt", "c", "c\\x.txt", "z.txt"));
  ClearFolderContents(Place(), true, true);
  EXPECT_THAT(Everything(Place()), SizeIs(5)) << "asked to stop before it began";
}

TEST_P(FolderContents, KeepsItselfWhenTheStopComesWithItsLastFolder) {
  static int lines;
  lines = 0;
  MakeFiles(Place(), {"last\\x.txt"});
  LogCleanResult = [](WideView, WideView) {
    ++lines;
    StopErase = true;
  };
  ClearFolderContents(Place(), true, true);
  EXPECT_TRUE(Exists(Place()));
  EXPECT_EQ(lines, 1) << "one for the subfolder, none for the folder itself";
}

TEST_P(FolderContents, RefusesWhatIsNoFolderBelowARoot) {
  MakeFiles(Place(), {"canary.txt", "temp\\canary.txt", "...\\canary.txt"});
  ::SetCurrentDirectoryA(Place().c_str());
  const Names before = Everything("C:\\made");
  const LogRecorder log;
  const auto expectRefused = [&before](const std::string& folder) {
    ClearFolderContents(folder, true, true);
    ASSERT_EQ(Everything("C:\\made"), before) << '"' << folder << '"';
    ASSERT_NE(::GetFileAttributesA("\\\\server\\share\\canary.txt"), INVALID_FILE_ATTRIBUTES) << '"' << folder << '"';
  };
  for (const char* root :
       {"C:", "c:\\", "C:\\\\", "C:\\.", "C:\\made\\..", "C:\\made\\..\\..\\..", "C:\\.\\x\\..\\", "C:\\...",
        "C:\\made\\...", "C:/", "\\\\server\\share", "\\\\server\\share\\", "\\\\server\\share\\.",
        "\\\\server\\share\\x\\..", "\\\\server", "\\\\?\\C:\\", "\\\\.\\C:\\", "\\\\?\\UNC\\server\\share"})
    expectRefused(root);
  for (const char* noFullPath : {"", "\\", "C:/made", "C:temp", "temp", "temp\\", ".\\temp", ".", "..", "\\made", "/made",
                                 "\\\\?\\C:\\made", " C:\\made", "\"C:\\made\"", "C:\\made\\*"})
    expectRefused(noFullPath);
  for (const char* below : {"canary.txt", "missing", "...", "...\\", "..\\..\\..\\.."})
    expectRefused(Place() + "\\" + below);
  expectRefused(Place() + "\\" + std::string(300, 'x') + "\\..\\temp");
  ::SetCurrentDirectoryA("C:\\");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_P(FolderContents, ReachesPathsBeyondTheOldLimit) {
  ClearFolderContents(Planted("long"), false, true);
  EXPECT_THAT(Everything(Planted("long")), IsEmpty());
}

TEST_P(FolderContents, GoesDown200Levels) {
  ClearFolderContents(Planted("tower200"), false, true);
  EXPECT_EQ(Exists(Planted("tower200\\level")), ByAnsi());  // 259 characters end above the ground
}

// QUELLIX_LEVELS says how many.
TEST_P(FolderContents, GoesDownHundredsOfLevels) {
  ClearFolderContents(Planted("tower"), false, true);
  EXPECT_EQ(Exists(Planted("tower\\l")), ByAnsi());
}

TEST_P(FolderContents, EndsWhereThePathGetsTooLongForTheSystem) {
  MakeFiles(Planted("tower too high"), {"zz.txt", "zz\\x.txt"});
  ClearFolderContents(Planted("tower too high"), false, true);
  EXPECT_TRUE(Exists(Planted("tower too high\\" + std::string(200, 'n')))) << "this system has no such limit";
  EXPECT_FALSE(Exists(Planted("tower too high\\zz"))) << "the walk did not go on";
}

// A second timer finds out whether the walk went on looking: that takes it about a second here.
TEST_P(FolderContents, LooksAtNothingMoreAfterTheStop) {
  wentOn = false;
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &StopAndWatch);
  ClearFolderContents(Planted("wide floor"), false, true);
  ::KillTimer(nullptr, timer);
  ::KillTimer(nullptr, watch);
  EXPECT_TRUE(StopErase);
  EXPECT_FALSE(wentOn);
}

TEST_P(FolderContents, RemovesTenThousandSubfolders) {
  ClearFolderContents(Planted("wide floor"), false, true);
  EXPECT_THAT(Everything(Planted("wide floor")), IsEmpty());
}
