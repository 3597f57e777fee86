// Starts an erase run without the user: once a minute it looks whether one is due.
#pragma once

#include "automation/fraScheduleManager.h"
#include "automation/timers.h"
#include "platform/main_window.h"

namespace automation {

class Scheduler {
 public:
  Scheduler(platform::MainWindow& window, const fraScheduleManager& options) : window_(window), options_(options) {}

  // The timer that runs from the window's design. Its tick does nothing: the one that Arm starts does the work.
  void Start(HWND window) const { ::SetTimer(window, downtimer, 1000, nullptr); }

  // Once a session. Nothing disarms the scheduler; whether a tick does anything is decided in the tick.
  void Arm(HWND window) const;

  // A due schedule presses "Erase Only", which does nothing while a run is in progress. While something is
  // asked nothing is due.
  void OnTimer(UINT_PTR timer);

 private:
  platform::MainWindow& window_;
  const fraScheduleManager& options_;
};

}  // namespace automation
