#include "automation/scheduler.h"

#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "settings/settings_variables.h"

namespace automation {
using namespace platform;

void Scheduler::Arm(HWND window) const {
  ::SetTimer(window, timerScheduler, 60000, nullptr);
  settings::Settings.ScheduleTickCount = 0;
}

void Scheduler::OnTimer(UINT_PTR timer) {
  if (timer != timerScheduler) return;
  DoEvents();
  const bool due = valueOr(false, [this] {
    ScheduleFacts facts = options_.Facts();
    facts.somethingAsked = IsSomethingAsked();
    return IsEraseDue(settings::Settings.ScheduleTickCount, facts);
  });
  if (due) window_.EraseOnly();
}

}  // namespace automation
