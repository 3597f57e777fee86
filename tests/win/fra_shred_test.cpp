// What the panel "Shredder" does with its controls, step by step: texts that show for a moment only, each step of the bar,
// and events that come in the middle. Its lists are filled as Explorer fills them, by a drop.

#include "shred/fraShred.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

#include "connection.h"
#include "main_window_stub.h"
#include "message_box_user.h"
#include "panel_for_tests.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/wide_system.h"
#include "scratch_folder.h"
#include "second_name.h"
#include "watched_window.h"
#include "window_event.h"

using namespace platform;
using namespace shred;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

// The texts that a window is given, from the moment on that it is watched.
class TextRecord final : WatchedWindow {
 public:
  explicit TextRecord(HWND window) : WatchedWindow(window) {}
  const Names& Texts() const { return texts_; }

 private:
  std::optional<LRESULT> At(UINT message, WPARAM, LPARAM lParam) override {
    if (message == WM_SETTEXT) texts_.emplace_back(reinterpret_cast<const char*>(lParam));
    return {};
  }

  Names texts_;
};

// The range and the places that a progress bar is given: "0..3", "1", "2", "3". `atFirst` runs when it comes to place 1.
class BarRecord final : WatchedWindow {
 public:
  explicit BarRecord(HWND window, std::function<void()> atFirst = nullptr)
      : WatchedWindow(window), atFirst_(std::move(atFirst)) {}
  const Names& Steps() const { return steps_; }

 private:
  std::optional<LRESULT> At(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == PBM_SETRANGE32) steps_.push_back(std::to_string(wParam) + ".." + std::to_string(lParam));
    if (message == PBM_SETPOS) steps_.push_back(std::to_string(wParam));
    if (message == PBM_SETPOS && wParam == 1 && atFirst_) atFirst_();
    return {};
  }

  Names steps_;
  std::function<void()> atFirst_;
};

// A list box that takes so many lines and no more.
class FullList final : WatchedWindow {
 public:
  FullList(HWND list, int room) : WatchedWindow(list), room_(room) {}

 private:
  std::optional<LRESULT> At(UINT message, WPARAM, LPARAM) override {
    const bool adds = message == LB_ADDSTRING || message == LB_INSERTSTRING;
    if (adds && ::SendMessageA(Window(), LB_GETCOUNT, 0, 0) >= room_) return LB_ERRSPACE;
    return {};
  }

  int room_;
};

class FraShred : public testing::Test {
 protected:
  void SetUp() override {
    ::DeleteFileA(kListFile);
    StopErase = false;
    GoOffline();
    InitControls();
    ASSERT_NE(panel.Create(parent), nullptr);
    ::ShowWindow(parent, SW_SHOWNA);
    Err.Clear();
  }
  void TearDown() override {
    ::DestroyWindow(parent);
    ::DeleteFileA(kListFile);
    StopErase = false;
  }

  HWND Item(int id) const { return ::GetDlgItem(panel.Handle(), id); }
  void Press(int id) const { ::SendMessageA(panel.Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0); }
  int Count(int list) const { return static_cast<int>(::SendMessageA(Item(list), LB_GETCOUNT, 0, 0)); }

  std::string Text(int id) const {
    char text[512] = "";
    ::GetWindowTextA(Item(id), text, sizeof text);
    return text;
  }

  // Files of the scratch folder by these names.
  Names Files(const Names& names) const {
    Names paths;
    for (const std::string& name : names) paths.push_back(folder.File(name));
    return paths;
  }
  Names Files(int count) const {
    Names paths;
    for (int number = 0; number < count; ++number) paths.push_back(folder.File("file " + std::to_string(number)));
    return paths;
  }

  void Drop(int list, const Names& paths) const {
    std::string names;
    for (const std::string& path : paths) names += path + '\0';
    DropNames(list, names.c_str(), names.size() + 1, FALSE);
  }
  void DropWide(int list, const std::wstring& path) const {
    const std::wstring names = path + L'\0';
    DropNames(list, names.c_str(), (names.size() + 1) * sizeof(wchar_t), TRUE);
  }

  void DropNames(int list, const void* names, std::size_t bytes, BOOL wide) const {
    RECT place;
    ::GetWindowRect(Item(list), &place);
    POINT at{place.left + 5, place.top + 5};
    ::ScreenToClient(panel.Handle(), &at);
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes);
    auto* const drop = static_cast<DROPFILES*>(::GlobalLock(block));
    drop->pFiles = sizeof(DROPFILES);
    drop->pt = at;
    drop->fWide = wide;
    std::memcpy(drop + 1, names, bytes);
    ::GlobalUnlock(block);
    ::SendMessageA(panel.Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
  }

  static constexpr char kListFile[] = "C:\\test\\QUELLIX_Shred";

  const ScratchFolder folder;
  const MessageBoxUser user;
  const WindowEvents events;
  const HWND parent =
      ::CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
  MainWindowStub window{parent};
  PanelForTests filled{window};
  fraShred& panel = filled.panel;
};
using ManualShredTest = FraShred;
using ScheduledShredTest = FraShred;
using DropTest = FraShred;
using SavingTest = FraShred;

}  // namespace

TEST_F(ManualShredTest, SaysWithThreeBlanksWhatItsLevelIsAndThenTheLevelOfTheScheduledList) {
  Drop(IDC_lstFileShred, Files(2));
  filled.SetLevels("1", "2");
  const TextRecord message(Item(IDC_txtMessage));
  Press(IDC_cmdshredFiles);
  EXPECT_THAT(message.Texts(), ElementsAre("   Shredding Files at level 1 may take some time.",
                                           "Shredding Files at level 2 may take more time.", "2 files shredded."));
}

TEST_F(ManualShredTest, LetsEventsRunBeforeTheFirstFile) {
  Drop(IDC_lstFileShred, Files(1));
  bool untouched = false;
  events.AtTheNext([&] { untouched = ReadWhole(folder / "file 0") == "content"; });
  Press(IDC_cmdshredFiles);
  EXPECT_TRUE(untouched);
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
}

TEST_F(ManualShredTest, TakesTheBarToEachFilesPlaceAlsoOfOneThatIsSkipped) {
  Names paths = Files(2);
  paths.insert(paths.begin() + 1, folder / "missing");
  Drop(IDC_lstFileShred, paths);
  const BarRecord bar(Item(IDC_PbarShred));
  Press(IDC_cmdshredFiles);
  ASSERT_GE(bar.Steps().size(), 5u);
  const Names first(bar.Steps().begin(), bar.Steps().begin() + 5);
  EXPECT_THAT(first, ElementsAre("0..3", "0", "1", "2", "3"));
  EXPECT_EQ(bar.Steps().back(), "0") << "the bar is reset";
}

TEST_F(ManualShredTest, SaysHowManyFilesAreGoneWhenSomeAreLeftOrWereNeverThere) {
  Names paths = Files(2);
  paths.push_back(folder / "missing");
  const HANDLE holder = ::CreateFileA(paths[0].c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  Drop(IDC_lstFileShred, paths);
  Press(IDC_cmdshredFiles);
  EXPECT_EQ(Text(IDC_txtMessage),
            "1 of 3 files shredded. " + paths[0] + " was not shredded (Permission denied), nor was 1 other.");
  EXPECT_EQ(Count(IDC_lstFileShred), 0);
  ::CloseHandle(holder);
  EXPECT_EQ(ReadWhole(paths[0]), "content");
}

TEST_F(ManualShredTest, CountsNoFileThatIsGoneWithoutBeingOverwritten) {
  filled.SetLevels("many", "50");
  Drop(IDC_lstFileShred, Files(1));
  Press(IDC_cmdshredFiles);
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
  EXPECT_EQ(Text(IDC_txtMessage), "0 of 1 file shredded. " + folder.Path() +
                                      "\\file 0 was deleted, but not overwritten as a whole (Type mismatch).");
  filled.SetLevels("1", "50");
  Drop(IDC_lstFileShred, Files(1));
  Press(IDC_cmdshredFiles);
  EXPECT_EQ(Text(IDC_txtMessage), "1 file shredded.");
}

TEST_F(ManualShredTest, GoesOnWithItsOwnBarBehindARunOfTheScheduledListInTheMiddle) {
  Drop(IDC_lstFileShred, Files(5));
  Drop(IDC_lstFiles, {folder.File("scheduled")});
  bool once = true;
  const BarRecord bar(Item(IDC_PbarShred), [&] {
    if (std::exchange(once, false)) panel.ShredDelete();
  });
  Press(IDC_cmdshredFiles);
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
  Names steps = bar.Steps();
  const auto nested = std::find(steps.begin(), steps.end(), "0..100");
  ASSERT_NE(nested, steps.end());
  steps.erase(steps.begin(), nested);
  ASSERT_GE(steps.size(), 8u);
  steps.resize(8);
  EXPECT_THAT(steps, ElementsAre("0..100", "0", "0..5", "0", "2", "3", "4", "5"));
}

// Three files, each of which fails at fourteen thousand writes.
TEST_F(ManualShredTest, SaysOnceForAllOfItsFilesWhatFailedWhileTheMachineIsOnLine) {
  const Names paths = Files(3);
  std::vector<UniqueFile> holders;
  for (const std::string& path : paths)
    holders.emplace_back(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  Drop(IDC_lstFileShred, paths);
  GoOnline();
  Press(IDC_cmdshredFiles);
  Names texts;
  for (const ShownBox& box : user.Boxes()) texts.push_back(box.text);
  EXPECT_THAT(texts, ElementsAre("modShred,DeleteFileShred70Permission denied",
                                 "modShred,DeleteFileShred52Bad file name or number"));
  const std::string requests = ReadWhole("C:\\test\\requests.txt");
  EXPECT_EQ(std::count(requests.begin(), requests.end(), '\n'), 1) << "one question whether it is";
  EXPECT_EQ(Text(IDC_txtMessage),
            "0 of 3 files shredded. " + paths[0] + " was not shredded (Permission denied), nor were 2 others.");
  EXPECT_EQ(NamesIn(folder.Path()).size(), 3u);
}

// An erase run that the scheduler starts in the middle leaves its stop request set.
TEST_F(ManualShredTest, IsNotEndedByAStopRequest) {
  Drop(IDC_lstFileShred, Files(3));
  const BarRecord bar(Item(IDC_PbarShred), [] { StopErase = true; });
  Press(IDC_cmdshredFiles);
  EXPECT_TRUE(StopErase);
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
  EXPECT_EQ(Text(IDC_txtMessage), "3 files shredded.");
}

TEST_F(ManualShredTest, LetsNoButtonChangeTheListsMeanwhile) {
  Drop(IDC_lstFileShred, Files(2));
  Drop(IDC_lstFiles, {folder / "scheduled"});
  Drop(IDC_lstFolder, {folder.Path()});
  events.AtTheNext([this] {
    for (const int button : {IDC_cmdClear, IDC_cmdshredFiles, IDC_cmdFolClear, IDC_cmdShredFolder, IDC_cmdShredAll,
                             IDC_cmdCustomDeleteAll, IDC_cmdFileShred, IDC_cmdAddFolder, IDC_cmdCustomAdd})
      Press(button);
    Drop(IDC_lstFileShred, {"C:\\dropped"});
    ::SendMessageA(Item(IDC_lstFiles), LB_SETSEL, TRUE, 0);
    ::SendMessageA(Item(IDC_lstFiles), WM_KEYDOWN, VK_DELETE, 0);
  });
  Press(IDC_cmdshredFiles);
  EXPECT_TRUE(events.HasRun());
  EXPECT_EQ(Text(IDC_txtMessage), "2 files shredded.");
  EXPECT_EQ(Count(IDC_lstFileShred), 0);
  EXPECT_EQ(Count(IDC_lstFolder), 1);
  EXPECT_EQ(Count(IDC_lstFiles), 1);
}

TEST_F(ManualShredTest, StepsTheBarThroughTheListThatIsCleared) {
  Drop(IDC_lstFileShred, Files(3));
  const BarRecord bar(Item(IDC_PbarShred));
  Press(IDC_cmdClear);
  EXPECT_THAT(bar.Steps(), ElementsAre("0..3", "0", "1", "2", "3", "0..100", "0"));
  EXPECT_EQ(Text(IDC_FileCount), "");
  EXPECT_EQ(Text(IDC_lStat), "Status");
  EXPECT_EQ(NamesIn(folder.Path()).size(), 3u);
}

TEST_F(ScheduledShredTest, ShredsTheCollectionAndEmptiesTheList) {
  Drop(IDC_lstFiles, Files(3));
  panel.ShredDelete();
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
  EXPECT_EQ(Count(IDC_lstFiles), 0);
  EXPECT_EQ(Text(IDC_FileCount), "");
  panel.ShredDelete();
  EXPECT_EQ(user.Boxes().size(), 1u) << "the collection is empty, too";
}

TEST_F(ScheduledShredTest, TakesTheBarToEachFilesPlaceAndStepsItThroughTheListThatIsCleared) {
  Drop(IDC_lstFiles, Files(2));
  {
    const BarRecord bar(Item(IDC_PbarShred));
    panel.ShredDelete();
    EXPECT_THAT(bar.Steps(), ElementsAre("0..2", "0", "1", "2", "0..100", "0"));
  }
  Drop(IDC_lstFiles, Files(2));
  const BarRecord bar(Item(IDC_PbarShred));
  Press(IDC_cmdCustomDeleteAll);
  EXPECT_THAT(bar.Steps(), ElementsAre("0..2", "0", "1", "2", "0..100", "0"));
}

TEST_F(ScheduledShredTest, EndsAtAStopRequestThatComesBeforeTheFirstFile) {
  Drop(IDC_lstFiles, Files(3));
  events.AtTheNext([] { StopErase = true; });
  panel.ShredDelete();
  EXPECT_EQ(NamesIn(folder.Path()).size(), 3u);
  EXPECT_EQ(Count(IDC_lstFiles), 3);
}

TEST_F(ScheduledShredTest, EndsAtAStopRequestBehindTheFileInHandAndKeepsTheOthers) {
  Drop(IDC_lstFiles, Files({"b", "a", "c"}));
  {
    const BarRecord bar(Item(IDC_PbarShred), [] { StopErase = true; });
    panel.ShredDelete();
  }
  EXPECT_THAT(NamesIn(folder.Path()), UnorderedElementsAre("a", "c"));
  EXPECT_EQ(Count(IDC_lstFiles), 2);
  EXPECT_EQ(filled.lstFiles.Item(0), Widen(folder / "a"));

  StopErase = false;
  panel.ShredDelete();
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty()) << "the collection has kept them, too";
}

// The run at the end of a session skips its items then, and shreds all the same. Meant.
TEST_F(ScheduledShredTest, TakesNoNoticeOfAStopRequestFromBefore) {
  Drop(IDC_lstFiles, Files(3));
  StopErase = true;
  panel.ShredDelete();
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty());
}

// The level is not that of the moment in which the run began.
TEST_F(ManualShredTest, TakesTheLevelThatItsBoxShowsAtEachFile) {
  const Names paths = Files(2);
  const ScratchFolder others("C:\\test\\second names");
  for (int file = 0; file < 2; ++file) GiveSecondName(paths[static_cast<std::size_t>(file)], others / std::to_string(file));
  filled.SetLevels("1", "9");
  Drop(IDC_lstFileShred, paths);
  const BarRecord bar(Item(IDC_PbarShred), [this] { filled.SetLevels("2", "9"); });
  Press(IDC_cmdshredFiles);
  EXPECT_EQ(ReadWhole(others / "0").size(), 960u);
  EXPECT_EQ(ReadWhole(others / "1").size(), 1480u);
}

TEST_F(ScheduledShredTest, TakesTheLevelThatItsBoxShowsAtEachFile) {
  const Names paths = Files(2);
  const ScratchFolder others("C:\\test\\second names");
  for (int file = 0; file < 2; ++file) GiveSecondName(paths[static_cast<std::size_t>(file)], others / std::to_string(file));
  filled.SetLevels("9", "1");
  Drop(IDC_lstFiles, paths);
  const BarRecord bar(Item(IDC_PbarShred), [this] { filled.SetLevels("9", "2"); });
  panel.ShredDelete();
  EXPECT_EQ(ReadWhole(others / "0").size(), 960u);
  EXPECT_EQ(ReadWhole(others / "1").size(), 1480u);
}

TEST_F(ScheduledShredTest, KeepsOnTheListAndInItsFileWhatCouldNotBeShredded) {
  Names paths = Files({"held", "a"});
  paths.insert(paths.begin() + 1, {"Q:\\not in\\b.txt", folder / "no folder\\c.txt", folder / "missing"});
  UniqueFile holder(::CreateFileA(paths[0].c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  Drop(IDC_lstFiles, paths);
  panel.ShredDelete();
  const std::string left = paths[0] + "\r\n" + paths[1] + "\r\n" + paths[2] + "\r\n";
  EXPECT_EQ(ReadWhole(kListFile), left);
  EXPECT_EQ(Count(IDC_lstFiles), 3);
  EXPECT_EQ(Text(IDC_FileCount), "There are 3 files ready for deleting!");
  EXPECT_EQ(Text(IDC_txtMessage),
            "1 of 5 files shredded. " + paths[0] + " was not shredded (Permission denied), nor were 3 others.");

  holder.reset();
  panel.ShredDelete();
  EXPECT_THAT(NamesIn(folder.Path()), IsEmpty()) << "the next run tries again";
  EXPECT_EQ(ReadWhole(kListFile), paths[1] + "\r\n" + paths[2] + "\r\n");
}

// The program ends in the middle of the run when its window is closed, and saves what is on the list.
TEST_F(ScheduledShredTest, SavesAtEachMomentWhatIsStillToBeShredded) {
  const Names paths = Files(3);
  Drop(IDC_lstFiles, paths);
  bool toBeSaved = false;
  {
    const BarRecord bar(Item(IDC_PbarShred), [&] {
      panel.SaveSettingsToFile();
      EXPECT_EQ(ReadWhole(kListFile), paths[1] + "\r\n" + paths[2] + "\r\n");
    });
    panel.ShredDelete();
  }

  Drop(IDC_lstFiles, Files(1));
  const BarRecord bar(Item(IDC_PbarShred), [&] { toBeSaved = panel.HasListToSave(); });
  panel.ShredDelete();
  EXPECT_TRUE(toBeSaved);
  EXPECT_FALSE(panel.HasListToSave());
}

TEST_F(ScheduledShredTest, ShredsNoLineThatCameFromTheFileAlone) {
  const Names loaded = Files({"loaded"});
  WriteWhole(kListFile, loaded[0] + "\r\n");
  panel.LoadFiles();
  Drop(IDC_lstFiles, Files({"added"}));
  EXPECT_EQ(Count(IDC_lstFiles), 2);
  panel.ShredDelete();
  EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("loaded"));
  EXPECT_EQ(Count(IDC_lstFiles), 1) << "what was not shredded stays";
  EXPECT_EQ(ReadWhole(kListFile), loaded[0] + "\r\n") << "and the next start lists the line again";
}

TEST_F(ScheduledShredTest, LeavesNoNameOfAShreddedFileInTheListsFile) {
  Drop(IDC_lstFiles, Files({"b", "a", "c"}));
  EXPECT_EQ(ReadWhole(kListFile).size(), 3 * (folder.Path().size() + 4));
  {
    const BarRecord bar(Item(IDC_PbarShred), [] { StopErase = true; });
    panel.ShredDelete();
  }
  EXPECT_EQ(ReadWhole(kListFile), (folder / "a") + "\r\n" + (folder / "c") + "\r\n") << "what a stop has left";
  StopErase = false;
  panel.ShredDelete();
  EXPECT_EQ(ReadWhole(kListFile), "");
}

TEST_F(ScheduledShredTest, LeavesTheListsFileAloneWhenItShredsNothing) {
  WriteWhole(kListFile, "C:\\one\nC:\\two");
  panel.LoadFiles();
  panel.ShredDelete();
  EXPECT_EQ(ReadWhole(kListFile), "C:\\one\nC:\\two");
}

TEST_F(DropTest, CountsWhatIsLeftAfterTheDeleteKey) {
  Drop(IDC_lstFileShred, Files(3));
  EXPECT_EQ(Text(IDC_FileCount), "There are 3 files ready for deleting!");
  ::SendMessageA(Item(IDC_lstFileShred), LB_SETSEL, TRUE, 1);
  ::SendMessageA(Item(IDC_lstFileShred), WM_KEYDOWN, VK_DELETE, 0);
  EXPECT_EQ(Text(IDC_FileCount), "There are 2 files ready for deleting!");
  ::SendMessageA(Item(IDC_lstFileShred), LB_SETSEL, TRUE, -1);
  ::SendMessageA(Item(IDC_lstFileShred), WM_KEYDOWN, VK_DELETE, 0);
  EXPECT_EQ(Text(IDC_FileCount), "");
}

TEST_F(DropTest, BesideTheListsIsNotTaken) {
  for (const int place : {IDC_cmdFileShred, IDC_txtLev, IDC_Frame11, IDC_txtMessage}) Drop(place, Files(1));
  for (const int list : {IDC_lstFileShred, IDC_lstFolder, IDC_lstFiles}) EXPECT_EQ(Count(list), 0);
}

// A list box has room for 32,767 lines on Windows 9x.
TEST_F(DropTest, ShredsNothingThatTheListHasNoRoomFor) {
  const Names paths = Files(3);
  {
    const FullList full(Item(IDC_lstFileShred), 2);
    Drop(IDC_lstFileShred, paths);
  }
  EXPECT_EQ(Count(IDC_lstFileShred), 2);
  EXPECT_EQ(Text(IDC_FileCount), "There are 2 files ready for deleting!");
  Press(IDC_cmdshredFiles);
  EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("file 2"));
}

TEST_F(DropTest, OfANameOutsideTheCodePageMeansThatFileAndNoneThatLooksLikeIt) {
  const std::wstring wide = L"C:\\test\\scratch\\\uFF41.txt";  // a wide "a", which the code page makes a plain one
  ASSERT_EQ(folder.Path(), "C:\\test\\scratch");
  Names paths = {folder.File("a.txt")};
  const HANDLE made = ::CreateFileW(wide.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  ASSERT_NE(made, INVALID_HANDLE_VALUE);
  ::CloseHandle(made);
  DropWide(IDC_lstFileShred, wide);
  wchar_t shown[MAX_PATH] = L"";
  ::SendMessageW(Item(IDC_lstFileShred), LB_GETTEXT, 0, reinterpret_cast<LPARAM>(shown));
  EXPECT_EQ(shown, wide) << "the list shows its real name";
  Press(IDC_cmdshredFiles);
  EXPECT_EQ(Text(IDC_txtMessage), "1 file shredded.");
  EXPECT_EQ(::GetFileAttributesW(wide.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a.txt"));
}

// A folder of that name keeps the new list from being written.
TEST_F(SavingTest, SaysWhenTheListCannotBeSavedOrDeleted) {
  ASSERT_TRUE(::CreateDirectoryA("C:\\test\\QUELLIX_Shred.tmp", nullptr));
  const std::string message = "The scheduled list could not be saved (Permission denied).";
  Drop(IDC_lstFiles, Files(2));
  EXPECT_EQ(Text(IDC_txtMessage), message);
  EXPECT_EQ(Count(IDC_lstFiles), 2);
  filled.Say("");
  EXPECT_EQ(failureOf([this] { panel.SaveSettingsToFile(); }).number, kPermissionDenied);
  EXPECT_EQ(Text(IDC_txtMessage), message);
  EXPECT_TRUE(user.Boxes().empty()) << "off line";

  GoOnline();
  panel.ShredDelete();
  ASSERT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(user.Boxes().front().text, "frmMain,ShredDelete70Permission denied");
  EXPECT_EQ(Text(IDC_txtMessage), message);
  EXPECT_TRUE(panel.HasListToSave()) << "it is tried again at the end";
  ::RemoveDirectoryA("C:\\test\\QUELLIX_Shred.tmp");
  panel.SaveSettingsToFile();
  EXPECT_FALSE(panel.HasListToSave());

  const UniqueFile holder(
      ::CreateFileA(kListFile, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  Press(IDC_cmdCustomDeleteAll);
  EXPECT_EQ(Text(IDC_txtMessage), message);
}

TEST_F(SavingTest, WritesNothingAtADeleteKeyWithoutAChosenLine) {
  filled.lstFiles.AddItem("C:\\work\\file");
  ::SendMessageA(Item(IDC_lstFiles), WM_KEYDOWN, VK_DELETE, 0);
  EXPECT_EQ(Count(IDC_lstFiles), 1);
  EXPECT_FALSE(IsThere(kListFile));
}

// A click that comes while the list is saved would otherwise leave half of it in the file of an empty list.
TEST_F(SavingTest, LetsNoButtonChangeTheListMeanwhile) {
  for (int number = 0; number < 100; ++number) filled.lstFiles.AddItem("C:\\work\\file");
  events.AtTheNext([this] { Press(IDC_cmdCustomDeleteAll); });
  ::Sleep(50);  // so that the saving looks for events at its first line
  panel.SaveSettingsToFile();
  EXPECT_TRUE(events.HasRun());
  EXPECT_EQ(Count(IDC_lstFiles), 100);
  EXPECT_EQ(ReadWhole(kListFile).size(), 100 * std::strlen("C:\\work\\file\r\n"));
}
