// Which messages the program's loops pass on.
#include "platform/message_pump.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

int calls;
void CALLBACK Count(HWND, UINT, UINT_PTR, DWORD) { ++calls; }

int ticks;
DWORD tickTakes;
constexpr int kEnough = 200;
LRESULT CALLBACK CountTicks(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_TIMER) return ::DefWindowProcA(window, message, wParam, lParam);
  ::Sleep(tickTakes);
  if (++ticks == kEnough) ::KillTimer(window, wParam);
  return 0;
}

HWND MakeWindow() {
  WNDCLASSA kind{};
  kind.lpfnWndProc = &CountTicks;
  kind.hInstance = ::GetModuleHandleA(nullptr);
  kind.lpszClassName = "Ticking";
  ::RegisterClassA(&kind);
  return ::CreateWindowExA(0, "Ticking", "", 0, 0, 0, 0, 0, nullptr, nullptr, kind.hInstance, nullptr);
}

class Timers : public testing::Test {
 protected:
  void SetUp() override {
    TimerProceduresRunForTests = false;
    calls = ticks = 0;
    tickTakes = 0;
  }
  void TearDown() override { TimerProceduresRunForTests = true; }
};

}  // namespace

TEST_F(Timers, AreNotCalledAtAnAddressThatAMessageBrings) {
  const HWND window = MakeWindow();
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(&Count));
  ::PostMessageA(window, WM_TIMER, 1, reinterpret_cast<LPARAM>(&Count));
  DoEvents();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(ticks, 0);
  TimerProceduresRunForTests = true;  // Wine calls it as the old systems do
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(&Count));
  DoEvents();
  EXPECT_EQ(calls, 1);
  ::DestroyWindow(window);
}

TEST_F(Timers, OfAWindowReachIt) {
  const HWND window = MakeWindow();
  ::SetTimer(window, 1, 10, nullptr);
  while (ticks < 2) WaitForEvents(1000);
  ::DestroyWindow(window);
}

// On a slow machine a timer can be due again whenever its message has been worked off.
TEST_F(Timers, ThatAreAlwaysDueDoNotKeepALookFromEnding) {
  const HWND window = MakeWindow();
  ::SetTimer(window, 1, 10, nullptr);
  tickTakes = 20;
  ::Sleep(20);
  DoEvents();
  EXPECT_GT(ticks, 1);
  EXPECT_LT(ticks, kEnough);
  ::DestroyWindow(window);
}
