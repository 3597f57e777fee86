// The main window's three timers.
#pragma once

#include "platform/win32.h"
#include "settings/settings_variables.h"

namespace app {

enum Timer : UINT_PTR { timeHide = 1, timerScheduler, downtimer };

// The two that run from the window's design: the poll of the boss key and its like, and one whose tick does nothing, which
// is meant.
inline void StartTimers(HWND window) {
  ::SetTimer(window, timeHide, 50, nullptr);
  ::SetTimer(window, downtimer, 1000, nullptr);
}

// Once a session. Nothing disarms the scheduler; whether a tick does anything is decided in the tick.
inline void ArmScheduler(HWND window) {
  ::SetTimer(window, timerScheduler, 60000, nullptr);
  settings::Settings.ScheduleTickCount = 0;
}

}  // namespace app
