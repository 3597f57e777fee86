#include "cleaners/mdPanic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "connection.h"
#include "message_box_user.h"
#include "other_program.h"
#include "platform/runtime_error.h"

using namespace cleaners;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFrame[] = "IEFrame";
constexpr char kOther[] = "Some Window";
// A hidden window is found like any other, and the screen never changes its place in the order of the windows.
constexpr DWORD kOffScreen = WS_OVERLAPPEDWINDOW;

class MdPanic : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(::FindWindowA(kFrame, nullptr), nullptr) << "a browser is open already";
    Err.Clear();
  }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  OtherProgram browser;
};
using CloseBrowserFramesTest = MdPanic;
using CloseWindowByTitleTest = MdPanic;
using MinimiseAllWindowsTest = MdPanic;

Request Close(HWND window) { return {window, WM_CLOSE, 0, 0}; }
Request CloseFrame(HWND window) { return {window, WM_CLOSE, 1, 1}; }
Request Gone(HWND window) { return {window, WM_DESTROY, 0, 0}; }

DWORD ProcessorMilliseconds() {
  FILETIME created, ended, kernel, user;
  ::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user);
  return (kernel.dwLowDateTime + user.dwLowDateTime) / 10000;
}

// Counts its own ticks in this thread: they show that window events run.
class Ticker {
 public:
  Ticker() : timer_(::SetTimer(nullptr, 0, 50, &Tick)) { ticks_ = 0; }
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;
  ~Ticker() { ::KillTimer(nullptr, timer_); }
  int Ticks() const { return ticks_; }

 private:
  static VOID CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) { ++ticks_; }
  static inline int ticks_ = 0;
  UINT_PTR timer_;
};

std::vector<Request> Answered(OtherProgram& program) {
  program.Answer();
  return program.Requests();
}

}  // namespace

TEST_F(CloseBrowserFramesTest, ReturnsAfterOneLookWhenThereIsNone) {
  const HWND other = browser.Open(kOther, "Microsoft Internet Explorer");
  DWORD fastest = ~0u;
  for (int times = 0; times < 5; ++times) {
    const DWORD before = ::GetTickCount();
    CloseBrowserFrames();
    fastest = std::min(fastest, ::GetTickCount() - before);
  }
  EXPECT_LT(fastest, 100u) << "it waited for nothing";
  EXPECT_TRUE(::IsWindow(other));
  EXPECT_THAT(Answered(browser), IsEmpty());
}

TEST_F(CloseBrowserFramesTest, LetsPendingEventsRunBeforeItLooks) {
  const Ticker ticker;
  ::Sleep(100);  // a tick is due
  EXPECT_EQ(ticker.Ticks(), 0);
  CloseBrowserFrames();
  EXPECT_GT(ticker.Ticks(), 0);
}

TEST_F(CloseBrowserFramesTest, AsksWithBothParametersOne) {
  const HWND frame = browser.Open(kFrame, "Home");
  CloseBrowserFrames();
  EXPECT_FALSE(::IsWindow(frame));
  EXPECT_THAT(browser.RequestsOnce(), ElementsAre(CloseFrame(frame), Gone(frame)));
}

TEST_F(CloseBrowserFramesTest, ClosesTwoWindowsOneARound) {
  const HWND first = browser.Open(kFrame, "One", kOffScreen);
  const HWND second = browser.Open(kFrame, "Two", kOffScreen);
  CloseBrowserFrames();
  EXPECT_THAT(browser.RequestsOnce(), ElementsAre(CloseFrame(second), Gone(second), CloseFrame(first), Gone(first)));
}

TEST_F(CloseBrowserFramesTest, ClosesWindowsThatAreHiddenOrMinimisedOrHaveNoTitle) {
  browser.Open(kFrame, "", WS_POPUP);
  browser.Open(kFrame, "Minimised", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_MINIMIZE);
  CloseBrowserFrames();
  EXPECT_EQ(::FindWindowA(kFrame, nullptr), nullptr);
}

TEST_F(CloseBrowserFramesTest, ClosesAWindowThatComesInTheMeantime) {
  const HWND first = browser.Open(kFrame, "One");
  HWND second = nullptr;
  browser.CloseWhen([&](HWND window) {
    if (window == first) second = browser.Open(kFrame, "Two");
    return true;
  });
  CloseBrowserFrames();
  EXPECT_NE(second, nullptr);
  EXPECT_FALSE(::IsWindow(second));
}

TEST_F(CloseBrowserFramesTest, LeavesOtherWindowsAlone) {
  const HWND others[] = {browser.Open("IEFrame2", "One"), browser.Open("Frame", "Two"), browser.Open(kOther, kFrame)};
  browser.Open(kFrame, "Home");
  CloseBrowserFrames();
  for (const HWND other : others) EXPECT_TRUE(::IsWindow(other));
}

TEST_F(CloseBrowserFramesTest, AsksAWindowThatRefusesAgainAndAgainWhileWindowEventsRun) {
  constexpr DWORD kRefusal = 3000;
  const HWND frame = browser.Open(kFrame, "Unsaved");
  const DWORD begin = ::GetTickCount();
  browser.CloseWhen([begin](HWND) { return ::GetTickCount() - begin >= kRefusal; });
  const DWORD processorBefore = ProcessorMilliseconds();
  const Ticker ticker;
  CloseBrowserFrames();
  EXPECT_GE(::GetTickCount() - begin, kRefusal);
  EXPECT_FALSE(::IsWindow(frame));
  EXPECT_THAT(browser.RequestsOnce(), ElementsAre(CloseFrame(frame), Gone(frame)));
  EXPECT_GT(browser.Requests().size(), 10u) << "it was asked again";
  EXPECT_GT(ticker.Ticks(), 10) << "the window's own events ran";
  EXPECT_LT(ProcessorMilliseconds() - processorBefore, kRefusal / 20);
}

TEST_F(CloseWindowByTitleTest, AsksWithBothParametersZero) {
  const HWND window = browser.Open(kOther, "Netscape");
  CloseWindowByTitle("Netscape");
  EXPECT_THAT(Answered(browser), ElementsAre(Close(window), Gone(window)));
}

TEST_F(CloseWindowByTitleTest, FindsTheTextAnywhereInTheTitle) {
  const std::vector<std::string> titles = {"Netscape: Mail", "Mail - Netscape",    "My Netscape 4",
                                           "xNetscapex",     "K\xE4se - Netscape", std::string(700, 'x') + " Netscape"};
  for (const std::string& title : titles) {
    const HWND window = browser.Open(kOther, title);
    CloseWindowByTitle("Netscape");
    Answered(browser);
    EXPECT_FALSE(::IsWindow(window)) << title;
    browser.Close(window);
  }
}

TEST_F(CloseWindowByTitleTest, ClosesOnlyTheFirstInTheOrderOfTheWindows) {
  const HWND below = browser.Open(kOther, "Netscape one", kOffScreen);
  const HWND above = browser.Open(kOther, "Netscape two", kOffScreen);
  CloseWindowByTitle("Netscape");
  EXPECT_THAT(Answered(browser), ElementsAre(Close(above), Gone(above)));
  EXPECT_TRUE(::IsWindow(below));

  const HWND again = browser.Open(kOther, "Netscape three", kOffScreen);
  browser.Do([below] { ::BringWindowToTop(below); });
  CloseWindowByTitle("Netscape");
  Answered(browser);
  EXPECT_FALSE(::IsWindow(below)) << "it was brought to the top";
  EXPECT_TRUE(::IsWindow(again));
}

TEST_F(CloseWindowByTitleTest, TellsCapitalsFromSmallLetters) {
  for (const char* title : {"netscape", "NETSCAPE", "NetScape", "Netscap", "Net scape", ""}) browser.Open(kOther, title);
  CloseWindowByTitle("Netscape");
  EXPECT_THAT(Answered(browser), IsEmpty());
}

TEST_F(CloseWindowByTitleTest, ClosesAHiddenWindowToo) {
  const HWND window = browser.Open(kOther, "Netscape", kOffScreen);
  CloseWindowByTitle("Netscape");
  Answered(browser);
  EXPECT_FALSE(::IsWindow(window));
}

TEST_F(CloseWindowByTitleTest, ForgetsWhatAnEarlierCallFound) {
  const HWND window = browser.Open(kOther, "Netscape");
  browser.CloseWhen([](HWND) { return false; });
  CloseWindowByTitle("Netscape");
  CloseWindowByTitle("Microsoft Internet Explorer");
  EXPECT_THAT(Answered(browser), ElementsAre(Close(window)));
}

TEST_F(CloseWindowByTitleTest, AsksAWindowThatRefusesOnce) {
  const HWND window = browser.Open(kOther, "Netscape");
  browser.CloseWhen([](HWND) { return false; });
  CloseWindowByTitle("Netscape");
  EXPECT_THAT(Answered(browser), ElementsAre(Close(window)));
  EXPECT_TRUE(::IsWindow(window));
}

// A window of the program itself whose title is said to be longer than the memory.
class CheckAllWindowsTest : public MdPanic {
 protected:
  CheckAllWindowsTest() {
    WNDCLASSA form{};
    form.lpfnWndProc = &Procedure;
    form.hInstance = ::GetModuleHandleA(nullptr);
    form.lpszClassName = "Boaster";
    ::RegisterClassA(&form);
    below_ = browser.Open(kOther, "Netscape");
    boaster_ =
        ::CreateWindowExA(WS_EX_TOPMOST, "Boaster", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, form.hInstance, nullptr);
  }
  ~CheckAllWindowsTest() { ::DestroyWindow(boaster_); }

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETTEXTLENGTH) return 0x7FFFFFF0;
    return ::DefWindowProcA(window, message, wParam, lParam);
  }

  HWND below_ = nullptr;
  HWND boaster_ = nullptr;
};

TEST_F(CheckAllWindowsTest, EndsTheSearchAtAnError) {
  GoOffline();
  CloseWindowByTitle("Netscape");
  EXPECT_THAT(Answered(browser), IsEmpty());
  EXPECT_TRUE(::IsWindow(below_));
}

TEST_F(CheckAllWindowsTest, ReportsAnErrorWhileTheMachineIsOnLine) {
  GoOnline();
  const MessageBoxUser user;
  CloseWindowByTitle("Netscape");
  ASSERT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(user.Boxes()[0].text, "mdPanic,CheckAllWindows7Out of memory");
  GoOffline();
}

TEST_F(MinimiseAllWindowsTest, PostsTheTaskbarItsCommand) {
  const HWND taskbar = browser.Open("Shell_TrayWnd", "", WS_POPUP, WS_EX_TOPMOST);
  ASSERT_EQ(::FindWindowA("Shell_TrayWnd", nullptr), taskbar);
  MinimiseAllWindows();
  EXPECT_THAT(Answered(browser), ElementsAre(Request{taskbar, WM_COMMAND, 419, 0}));
}
