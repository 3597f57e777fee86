#include "automation/stealth.h"

#include <string>
#include <utility>

#include "automation/key_poll.h"
#include "automation/modHide.h"
#include "platform/dialog.h"
#include "platform/message_box.h"
#include "platform/owned_windows.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/tally.h"
#include "settings/schema.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

namespace automation {
using namespace platform;

enum class Window { Vanish, ShowNormal, ShowAndActivate };
enum class Icon { Leave, Remove, Add };
enum class TaskList { Leave, Hide, Unhide };

// What happens to what. On the way out the window goes last, on the way back it comes before icon and task list.
struct Way {
  Browsers browsers;
  Window window;
  Icon icon;
  TaskList taskList;
};

namespace {

constexpr Way kHideByBossKey = {Browsers::Hide, Window::Vanish, Icon::Leave, TaskList::Leave};
constexpr Way kBackByBossKey = {Browsers::Restore, Window::ShowNormal, Icon::Leave, TaskList::Leave};
constexpr Way kGoInvisible = {Browsers::Leave, Window::Vanish, Icon::Remove, TaskList::Hide};
constexpr Way kBackByKeys = {Browsers::Leave, Window::ShowAndActivate, Icon::Add, TaskList::Unhide};
constexpr Way kBackFromIcon = {Browsers::Leave, Window::ShowNormal, Icon::Leave, TaskList::Leave};
constexpr Way kBackFromMenu = {Browsers::Leave, Window::ShowAndActivate, Icon::Leave, TaskList::Unhide};

std::uint16_t KeyState(int key) { return static_cast<std::uint16_t>(::GetAsyncKeyState(key)); }

PolledKeys LookAtKeys() {
  return {.boss = KeyState(settings::Settings.BossKeyCode),
          .shift = KeyState(VK_SHIFT),
          .ctrl = KeyState(VK_CONTROL),
          .u = KeyState('U'),
          .h = KeyState('H')};
}

// Also what has come up over the window while it was out of sight.
void Vanish(HWND window) {
  ::ShowWindow(window, SW_HIDE);
  ShowWindowsOver(window, false);
}

void ShowNormal(HWND window) {
  ::ShowWindow(window, SW_SHOWNORMAL);
  ::SetForegroundWindow(window);
  ::ShowWindow(window, SW_SHOW);
}

// A question or the like that is open over the window gets the keyboard, which the window itself does not take meanwhile.
void BringOpenBoxForward(HWND window) {
  const HWND front = WindowInFront(window);
  if (front != window) ::SetForegroundWindow(front);
}

void TakeTaskList(TaskList taskList) {
  if (taskList == TaskList::Hide) HideFromTaskList();
  if (taskList == TaskList::Unhide) UnhideFromTaskList();
}

bool HasToWarn() {
  return valueOr(false, [] { return Trim(settings::GetSetting(settings::Setting::Message)) == "Do"; });
}

}  // namespace

void Stealth::TakeBrowsers(Browsers browsers) {
  if (browsers == Browsers::Leave) return;
  browsersHidden_ = browsers == Browsers::Hide;
  browsersHidden_ ? HideBrowserWindows() : RestoreBrowserWindows();
}

void Stealth::BringBrowsersBack() {
  if (browsersHidden_) TakeBrowsers(Browsers::Restore);
  PlaceAwaitedBrowsers(1000);
}

void Stealth::TakeWindow(const Way& way) {
  const HWND window = window_.Window();
  if (way.window == Window::Vanish) return Vanish(window);
  if (way.window == Window::ShowNormal)
    ShowNormal(window);
  else
    ShowAndActivate(window);
  BringOpenBoxForward(window);
}

void Stealth::Take(const Way& way) {
  const bool out = way.window == Window::Vanish;
  resumeNext([&] { TakeBrowsers(way.browsers); });
  if (out)
    TakeTaskList(way.taskList);
  else
    TakeWindow(way);
  if (way.icon != Icon::Leave) {
    invisible_ = NothingIsKept = way.icon == Icon::Remove;
    if (invisible_) resumeNext([this] { window_.ForgetRuns(); });
    resumeNext([this] { window_.ShowIcon(!invisible_); });
  }
  if (out)
    TakeWindow(way);
  else
    TakeTaskList(way.taskList);
}

void Stealth::OnTimer(UINT_PTR timer) {
  if (timer == timeHide) PollKeys();
}

void Stealth::PollKeys() {
  const PollActions actions = ActionsOf(LookAtKeys());
  const std::int32_t bossKey = settings::Settings.BossKeyCode;
  // The first look at a key also tells of presses long before it, which would hide the program as it starts or as the key
  // is chosen.
  if (std::exchange(polledBossKey_, bossKey) != bossKey) return;
  if (actions.hide) resumeNext([this] { HideByBossKey(); });
  if (actions.restore) resumeNext([this] { Take(kBackByBossKey); });
  if (actions.comeBack) resumeNext([this] { Take(kBackByKeys); });
  if (actions.goInvisible) RunInvisibly();
}

void Stealth::HideByBossKey() { Take(kHideByBossKey); }
void Stealth::ComeBackFromIcon() { Take(kBackFromIcon); }
void Stealth::ComeBackFromMenu() { Take(kBackFromMenu); }

// Only Ctrl+U brings the icon back as well. Over a question or a dialog comes no warning, and the program hides at once: who
// presses the keys then wants it out of sight. The open warning is answered first.
void Stealth::RunInvisibly() {
  if (warning_.Handle() != nullptr) return;
  if (HasToWarn() && !IsSomethingAsked()) resumeNext([this] { warning_.ShowModal(window_.Window()); });
  Take(kGoInvisible);
}

bool Stealth::IsStealthKey(const MSG& message) {
  return message.message == WM_KEYDOWN && (message.wParam == 'H' || message.wParam == 'U') &&
         ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0;
}

bool Stealth::IsBossKey(const MSG& message) {
  constexpr LPARAM kWithAlt = 1 << 29;
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_KEYUP || message.message == WM_SYSKEYDOWN ||
                     message.message == WM_SYSKEYUP;
  return isKey && message.wParam == static_cast<WPARAM>(settings::Settings.BossKeyCode) && (message.lParam & kWithAlt) == 0;
}

}  // namespace automation
