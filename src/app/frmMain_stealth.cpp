// The main window's timers: the scheduler, and the keys that hide the program and bring it back.
#include "app/frmMain.h"

#include <optional>
#include <utility>

#include "app/front_window.h"
#include "app/timers.h"
#include "automation/key_poll.h"
#include "automation/modHide.h"
#include "automation/schedule_tick.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

namespace {

std::uint16_t KeyState(int key) { return static_cast<std::uint16_t>(::GetAsyncKeyState(key)); }

automation::PolledKeys LookAtKeys() {
  return {KeyState(settings::Settings.BossKeyCode), KeyState(VK_SHIFT), KeyState(VK_CONTROL), KeyState('U'), KeyState('H')};
}

// The boss key of the last look.
std::optional<std::int32_t> polledBossKey;

// A question or the like that is open over the window gets the keyboard, which the window itself does not take meanwhile.
void BringOpenBoxForward(HWND mainWindow) {
  const HWND front = WindowToBringForward(mainWindow);
  if (front != mainWindow) ::SetForegroundWindow(front);
}

}  // namespace

void frmMain::OnTimer(WPARAM timer) {
  if (timer == timeHide) PollKeys();
  if (timer == timerScheduler) TickScheduler();
}

// What a due schedule does is a press of "Erase Only", which does nothing while a run or a message stands.
void frmMain::TickScheduler() {
  DoEvents();
  bool due = false;
  resumeNext([&] { due = automation::IsEraseDue(settings::Settings.ScheduleTickCount, panels_.scheduleManager.Facts()); });
  if (due) EraseOnly();
}

void frmMain::PollKeys() {
  const automation::PollActions actions = automation::ActionsOf(LookAtKeys());
  // The first look at a key also tells of presses long before it, which would hide the program as it starts or as the key
  // is chosen.
  if (std::exchange(polledBossKey, settings::Settings.BossKeyCode) != settings::Settings.BossKeyCode) return;
  if (actions.hide) resumeNext([this] { HideByBossKey(); });
  if (actions.restore) resumeNext([this] { RestoreByBossKey(); });
  if (actions.comeBack) resumeNext([this] { ComeBack(); });
  if (actions.goInvisible) RunInvisibly();
}

void frmMain::HideByBossKey() {
  automation::HideBrowserWindows();
  Vanish();
}

// Also what has come up over the window while it was out of sight.
void frmMain::Vanish() {
  ::ShowWindow(Handle(), SW_HIDE);
  ::ShowOwnedPopups(Handle(), FALSE);
}

void frmMain::RestoreByBossKey() {
  automation::RestoreBrowserWindows();
  ::ShowWindow(Handle(), SW_SHOWNORMAL);
  ::SetForegroundWindow(Handle());
  ::ShowWindow(Handle(), SW_SHOW);
  BringOpenBoxForward(Handle());
}

void frmMain::ComeBack() {
  automation::ShowAndActivate(Handle());
  BringOpenBoxForward(Handle());
  resumeNext([this] { icon_.Add(); });
  automation::UnhideFromTaskList();
}

// Only Ctrl+U brings the icon back as well.
void frmMain::RunInvisibly() {
  bool warn = false;
  resumeNext([&warn] { warn = Trim(settings::GetSetting(settings::Setting::Message)) == "Do"; });
  if (warn) {
    if (!::IsWindowEnabled(Handle())) return;  // over a question, or the warning itself, there comes no other one
    resumeNext([this] { warning_.ShowModal(Handle()); });
  }
  automation::HideFromTaskList();
  resumeNext([this] { icon_.Remove(); });
  Vanish();
}

}  // namespace app
