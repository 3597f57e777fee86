#include "automation/modHide.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <utility>

#include "late_calls.h"
#include "nothing_pending.h"
#include "other_program.h"
#include "platform/Reg32.h"
#include "platform/os_name.h"
#include "platform/runtime_error.h"

using namespace automation;
using namespace platform;

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFrame[] = "IEFrame";
constexpr DWORD kNormal = WS_OVERLAPPEDWINDOW | WS_VISIBLE;

// Process and state of each call.
std::vector<std::pair<DWORD, DWORD>> taskListCalls;

DWORD WINAPI RecordServiceProcess(DWORD process, DWORD state) {
  taskListCalls.emplace_back(process, state);
  return 1;
}

bool IsWindows9xSetting() {
  const char* version = std::getenv("QUELLIX_WINDOWS_VERSION");
  return version != nullptr && std::string(version).starts_with("win9");
}

bool PlacesByWaiting() {
  const char* version = std::getenv("QUELLIX_WINDOWS_VERSION");
  return IsWindows9xSetting() || (version != nullptr && version == std::string("nt40"));
}

class ModHide : public NothingPending {
 protected:
  static void SetUpTestSuite() {
    ReplaceFunction("RegisterServiceProcess", &RecordServiceProcess);
    OsName = FindOS();
  }
  void SetUp() override {
    NothingPending::SetUp();
    ASSERT_NE(std::getenv("QUELLIX_WINDOWS_VERSION"), nullptr)
        << "the test is started by its runner, which sets the version";
    taskListCalls.clear();
  }
};
using TaskListTest = ModHide;
using ShowAndActivateTest = ModHide;

class BrowserWindowsTest : public ModHide {
 protected:
  void SetUp() override {
    ModHide::SetUp();
    ASSERT_EQ(::FindWindowA(kFrame, nullptr), nullptr) << "a browser is open already";
    SavedBrowserPlacements.clear();
  }
  OtherProgram browser;
};

// A browser that is at work until it is told to answer again. Windows 2000 and later do all of this themselves.
class BusyBrowserTest : public BrowserWindowsTest {
 protected:
  void SetUp() override {
    // Runs under Windows 9x and NT 4; later systems take the place of a window that is busy for themselves.
    if (!PlacesByWaiting()) GTEST_SKIP() << "the system places windows without waiting";
    BrowserWindowsTest::SetUp();
  }
  void TearDown() override {
    Free();
    ::CloseHandle(free_);
  }
  void Busy() { browser.Begin(work_); }
  void Free() { ::SetEvent(free_); }

  // Answers come through the loop of messages.
  static void LetEventsRunUntil(const std::function<bool()>& done) {
    const DWORD start = ::GetTickCount();
    MSG message;
    while (!done() && ::GetTickCount() - start < 30000) {
      ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
      while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    }
  }

  HANDLE free_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::function<void()> work_ = [this] { ::WaitForSingleObject(free_, 60000); };
};

WINDOWPLACEMENT PlacementOf(HWND window) {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  ::GetWindowPlacement(window, &placement);
  return placement;
}

// The system tells another program that it is activated without waiting for it.
std::vector<HWND> ActivatedIn(OtherProgram& program) {
  program.Answer();
  return program.Activated();
}

RECT PlaceOf(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place;
}

}  // namespace

bool operator==(const RECT& one, const RECT& other) { return ::EqualRect(&one, &other) != 0; }

// Show state and the place of the normal window: what a user sees of a placement.
bool operator==(const WINDOWPLACEMENT& one, const WINDOWPLACEMENT& other) {
  return one.showCmd == other.showCmd && one.rcNormalPosition == other.rcNormalPosition;
}

TEST_F(TaskListTest, TheProcessIsTakenOutAndPutBackOnWindows9xOnly) {
  HideFromTaskList();
  UnhideFromTaskList();
  const DWORD own = ::GetCurrentProcessId();
  if (IsWindows9xSetting())
    EXPECT_THAT(taskListCalls, ElementsAre(std::pair(own, 1u), std::pair(own, 0u)));
  else
    EXPECT_THAT(taskListCalls, IsEmpty());
}

TEST_F(TaskListTest, TheCallIsNotEvenLookedForOnTheNtFamily) {
  HideFromTaskList();
  UnhideFromTaskList();
  const bool looked = std::count(LookedUpFunctions.begin(), LookedUpFunctions.end(), "RegisterServiceProcess") != 0;
  EXPECT_EQ(looked, IsWindows9xSetting());
}

TEST_F(TaskListTest, TheNameOfTheSystemDecides) {
  const std::string found = std::exchange(OsName, "");
  HideFromTaskList();
  EXPECT_EQ(taskListCalls.size(), 1u) << "a system without a name of its own";
  OsName = "some windows nt";
  HideFromTaskList();
  EXPECT_EQ(taskListCalls.size(), 1u);
  OsName = found;
}

TEST_F(ShowAndActivateTest, ShowsAHiddenWindow) {
  OtherProgram program;
  const HWND window = program.Open("Form", "Hidden", WS_OVERLAPPEDWINDOW);
  ASSERT_FALSE(::IsWindowVisible(window));
  ShowAndActivate(window);
  EXPECT_TRUE(::IsWindowVisible(window));
  EXPECT_THAT(ActivatedIn(program), Contains(window));
  EXPECT_THAT(program.Requests(), IsEmpty()) << "it was not minimised";
}

TEST_F(ShowAndActivateTest, RestoresAMinimisedWindowByTheSystemCommand) {
  OtherProgram program;
  const HWND window = program.Open("Form", "Minimised", kNormal | WS_MINIMIZE);
  ASSERT_TRUE(::IsIconic(window));
  ShowAndActivate(window);
  EXPECT_FALSE(::IsIconic(window));
  EXPECT_THAT(ActivatedIn(program), Contains(window));
  EXPECT_THAT(program.Requests(), ElementsAre(Request{window, WM_SYSCOMMAND, 0xF120, 0}));
}

TEST_F(ShowAndActivateTest, ShowsAndRestoresAWindowThatIsMinimisedAndHidden) {
  OtherProgram program;
  const HWND window = program.Open("Form", "Both", kNormal | WS_MINIMIZE);
  program.Do([window] { ::ShowWindow(window, SW_HIDE); });
  ShowAndActivate(window);
  EXPECT_TRUE(::IsWindowVisible(window));
  EXPECT_FALSE(::IsIconic(window));
  EXPECT_THAT(ActivatedIn(program), Contains(window));
}

TEST_F(ShowAndActivateTest, BringsAWindowOnShowToTheFrontAndLeavesItAsItIs) {
  OtherProgram program;
  const HWND window = program.Open("Form", "Maximised", kNormal | WS_MAXIMIZE);
  program.Open("Form", "Above");
  ASSERT_THAT(program.Activated(), IsEmpty());
  ShowAndActivate(window);
  EXPECT_THAT(ActivatedIn(program), Contains(window));
  EXPECT_TRUE(::IsZoomed(window));
  EXPECT_THAT(program.Requests(), IsEmpty());
}

TEST_F(ShowAndActivateTest, DoesNothingToAWindowThatIsGone) {
  ShowAndActivate(nullptr);
  ShowAndActivate(reinterpret_cast<HWND>(0x7FFF0));
}

TEST_F(BrowserWindowsTest, AreKeptInRecordsOf48BytesWithAPlacementOf44) {
  EXPECT_EQ(sizeof(BrowserPlacement), 48u);
  EXPECT_EQ(sizeof(WINDOWPLACEMENT), 44u);
  browser.Open(kFrame, "Home");
  HideBrowserWindows();
  EXPECT_EQ(SavedBrowserPlacements[0].placement.length, 44u);
}

TEST_F(BrowserWindowsTest, LeaveOneEmptyRecordWhenThereIsNone) {
  browser.Open("Form", "No browser");
  SavedBrowserPlacements.resize(7);
  HideBrowserWindows();
  ASSERT_EQ(SavedBrowserPlacements.size(), 1u);
  EXPECT_EQ(SavedBrowserPlacements[0].window, nullptr);
  RestoreBrowserWindows();
}

TEST_F(BrowserWindowsTest, ComeBackAsTheyWere) {
  const HWND windows[] = {browser.Open(kFrame, "Normal"), browser.Open(kFrame, "Maximised", kNormal | WS_MAXIMIZE),
                          browser.Open(kFrame, "Minimised", kNormal | WS_MINIMIZE)};
  std::vector<WINDOWPLACEMENT> before;
  std::vector<RECT> places;
  for (const HWND window : windows) before.push_back(PlacementOf(window)), places.push_back(PlaceOf(window));
  ASSERT_EQ(before[0].showCmd, static_cast<UINT>(SW_SHOWNORMAL));
  ASSERT_EQ(before[1].showCmd, static_cast<UINT>(SW_SHOWMAXIMIZED));
  ASSERT_EQ(before[2].showCmd, static_cast<UINT>(SW_SHOWMINIMIZED));

  HideBrowserWindows();
  for (const HWND window : windows) EXPECT_FALSE(::IsWindowVisible(window));

  RestoreBrowserWindows();
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_TRUE(::IsWindowVisible(windows[i])) << i;
    EXPECT_TRUE(PlacementOf(windows[i]) == before[i]) << i;
    EXPECT_TRUE(PlaceOf(windows[i]) == places[i]) << i;
  }
}

TEST_F(BrowserWindowsTest, AreSavedInTheOrderInWhichTheyAreHiddenWithAnEmptyRecordBehindThem) {
  const HWND below = browser.Open(kFrame, "Below");
  const HWND above = browser.Open(kFrame, "Above", kNormal | WS_MAXIMIZE);
  const std::map<HWND, WINDOWPLACEMENT> before = {{below, PlacementOf(below)}, {above, PlacementOf(above)}};
  HideBrowserWindows();
  ASSERT_EQ(SavedBrowserPlacements.size(), 3u);
  EXPECT_THAT(browser.Hidden(), ElementsAre(SavedBrowserPlacements[0].window, SavedBrowserPlacements[1].window));
  for (std::size_t i = 0; i < 2; ++i)
    EXPECT_TRUE(SavedBrowserPlacements[i].placement == before.at(SavedBrowserPlacements[i].window))
        << "and not the hidden state that it gets";
  EXPECT_EQ(SavedBrowserPlacements[2].window, nullptr);
}

TEST_F(BrowserWindowsTest, ThatAreClosedWhileHiddenArePassedOver) {
  const HWND windows[] = {browser.Open(kFrame, "One"), browser.Open(kFrame, "Two"), browser.Open(kFrame, "Three")};
  HideBrowserWindows();
  browser.Close(windows[1]);
  RestoreBrowserWindows();
  EXPECT_TRUE(::IsWindowVisible(windows[0]));
  EXPECT_TRUE(::IsWindowVisible(windows[2]));
}

TEST_F(BrowserWindowsTest, AreRestoredTheLastSavedFirstSoThatTheyStandAboveEachOtherAsBefore) {
  for (const char* title : {"One", "Two", "Three"}) browser.Open(kFrame, title);
  HideBrowserWindows();
  std::vector<HWND> saved;
  for (const BrowserPlacement& record : SavedBrowserPlacements)
    if (record.window != nullptr) saved.push_back(record.window);
  browser.Forget();
  RestoreBrowserWindows();
  std::reverse(saved.begin(), saved.end());
  EXPECT_EQ(browser.Shown(), saved);
}

TEST_F(BrowserWindowsTest, ThatWereHiddenTwiceComeBackAllTheSame) {
  const HWND normal = browser.Open(kFrame, "Normal");
  const HWND maximised = browser.Open(kFrame, "Maximised", kNormal | WS_MAXIMIZE);
  const HWND minimised = browser.Open(kFrame, "Minimised", kNormal | WS_MINIMIZE);
  HideBrowserWindows();
  HideBrowserWindows();
  EXPECT_EQ(SavedBrowserPlacements.size(), 4u) << "they are listed anew, not once more";
  RestoreBrowserWindows();
  EXPECT_TRUE(::IsWindowVisible(normal) && ::IsWindowVisible(maximised) && ::IsWindowVisible(minimised));
  EXPECT_TRUE(::IsZoomed(maximised));
  EXPECT_TRUE(::IsIconic(minimised));
}

TEST_F(BrowserWindowsTest, OpenedBetweenTwoHidingsAreHiddenAndRestoredAsWell) {
  const HWND first = browser.Open(kFrame, "First");
  HideBrowserWindows();
  const HWND second = browser.Open(kFrame, "Second");
  HideBrowserWindows();
  EXPECT_FALSE(::IsWindowVisible(second));
  RestoreBrowserWindows();
  EXPECT_TRUE(::IsWindowVisible(first) && ::IsWindowVisible(second));
}

TEST_F(BrowserWindowsTest, AreThoseOfExactlyThatClass) {
  const HWND others[] = {browser.Open("IEFrame2", "One"), browser.Open("MyIEFrame", "Two"),
                         browser.Open("IEFrame" + std::string(200, 'x'), "Three"), browser.Open("Form", kFrame)};
  HideBrowserWindows();
  for (const HWND other : others) EXPECT_TRUE(::IsWindowVisible(other));
  EXPECT_EQ(SavedBrowserPlacements.size(), 1u);
}

TEST_F(BrowserWindowsTest, AreTwentyWithoutEnd) {
  for (int i = 0; i < 20; ++i) browser.Open(kFrame, std::to_string(i));
  HideBrowserWindows();
  EXPECT_EQ(SavedBrowserPlacements.size(), 21u);
  RestoreBrowserWindows();
  for (const BrowserPlacement& saved : SavedBrowserPlacements)
    EXPECT_EQ(::IsWindowVisible(saved.window), saved.window != nullptr);
}

TEST_F(BrowserWindowsTest, AreRestoredAgainByASecondRestore) {
  const HWND window = browser.Open(kFrame, "Home");
  HideBrowserWindows();
  RestoreBrowserWindows();
  browser.Do([window] { ::ShowWindow(window, SW_HIDE); });
  RestoreBrowserWindows();
  EXPECT_TRUE(::IsWindowVisible(window));
}

TEST_F(BrowserWindowsTest, AreNothingBeforeTheFirstHiding) {
  const HWND window = browser.Open(kFrame, "Hidden by itself", WS_OVERLAPPEDWINDOW);
  RestoreBrowserWindows();
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(BusyBrowserTest, IsHiddenOnceItAnswers) {
  const HWND window = browser.Open(kFrame, "At work");
  Busy();
  HideBrowserWindows();
  EXPECT_TRUE(::IsWindowVisible(window));
  Free();
  LetEventsRunUntil([window] { return !::IsWindowVisible(window); });
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(BusyBrowserTest, ComesBackOnceItAnswers) {
  const HWND window = browser.Open(kFrame, "At work", kNormal | WS_MAXIMIZE);
  HideBrowserWindows();
  Busy();
  RestoreBrowserWindows();
  EXPECT_FALSE(::IsWindowVisible(window));
  Free();
  LetEventsRunUntil([window] { return ::IsWindowVisible(window) != FALSE; });
  EXPECT_TRUE(::IsZoomed(window));
}

TEST_F(BusyBrowserTest, StaysOnShowWhenItAnswersAfterTheWayBack) {
  const HWND window = browser.Open(kFrame, "At work");
  Busy();
  HideBrowserWindows();
  RestoreBrowserWindows();
  Free();
  browser.Answer();
  int rounds = 0;
  LetEventsRunUntil([&rounds] { return ++rounds > 3; });
  EXPECT_TRUE(::IsWindowVisible(window));
  EXPECT_THAT(browser.Hidden(), IsEmpty());
}

TEST_F(BusyBrowserTest, GetsTimeToComeBackAtTheEndOfTheProgram) {
  const HWND window = browser.Open(kFrame, "At work");
  HideBrowserWindows();
  Busy();
  RestoreBrowserWindows();
  Free();
  PlaceAwaitedBrowsers(30000);
  EXPECT_TRUE(::IsWindowVisible(window));
}

TEST_F(BusyBrowserTest, IsForgottenAfterItsTimeAtTheEnd) {
  const HWND window = browser.Open(kFrame, "At work");
  HideBrowserWindows();
  Busy();
  RestoreBrowserWindows();
  const DWORD start = ::GetTickCount();
  PlaceAwaitedBrowsers(100);
  EXPECT_LT(::GetTickCount() - start, 10000u);
  EXPECT_FALSE(::IsWindowVisible(window));
}
