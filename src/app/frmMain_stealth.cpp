// The main window's timers: the scheduler, and the keys that hide the program and bring it back.
#include "app/frmMain.h"
#include "app/timers.h"
#include "automation/key_poll.h"
#include "automation/modHide.h"
#include "automation/schedule_tick.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

namespace {

std::uint16_t KeyState(int key) { return static_cast<std::uint16_t>(::GetAsyncKeyState(key)); }

PolledKeys LookAtKeys() {
  return {KeyState(Settings.BossKeyCode), KeyState(VK_SHIFT), KeyState(VK_CONTROL), KeyState('U'), KeyState('H')};
}

}  // namespace

void frmMain::OnTimer(WPARAM timer) {
  if (timer == timeHide) PollKeys();
  if (timer == timerScheduler) TickScheduler();
}

// What a due schedule does is a press of "Erase Only". While the press of an earlier tick has not come back, because its run
// or its message stands, the schedule goes on counting and presses no second time.
void frmMain::TickScheduler() {
  DoEvents();
  bool due = false;
  resumeNext([&] { due = IsEraseDue(Settings.ScheduleTickCount, panels_.scheduleManager.Facts()); });
  if (!due || scheduledRun_) return;
  scheduledRun_ = true;
  EraseOnly();
  scheduledRun_ = false;
}

void frmMain::PollKeys() {
  const PollActions actions = ActionsOf(LookAtKeys());
  if (actions.hide) resumeNext([this] { HideByBossKey(); });
  if (actions.restore) resumeNext([this] { RestoreByBossKey(); });
  if (actions.comeBack) resumeNext([this] { ComeBack(); });
  // While the warning or a question is open, the keys that would open it over again do nothing.
  if (actions.goInvisible && ::IsWindowEnabled(Handle())) RunInvisibly();
}

void frmMain::HideByBossKey() {
  HideBrowserWindows();
  ::ShowWindow(Handle(), SW_HIDE);
}

void frmMain::RestoreByBossKey() {
  RestoreBrowserWindows();
  ::ShowWindow(Handle(), SW_SHOWNORMAL);
  ::SetForegroundWindow(Handle());
  ::ShowWindow(Handle(), SW_SHOW);
}

void frmMain::ComeBack() {
  ShowAndActivate(Handle());
  resumeNext([this] { icon_.Add(); });
  UnhideFromTaskList();
}

// Only Ctrl+U brings the icon back as well.
void frmMain::RunInvisibly() {
  resumeNext([this] {
    if (Trim(GetSetting(Setting::Message)) == "Do") warning_.ShowModal(Handle());
  });
  HideFromTaskList();
  resumeNext([this] { icon_.Remove(); });
  ::ShowWindow(Handle(), SW_HIDE);
}
