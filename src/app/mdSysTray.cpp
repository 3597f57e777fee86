#include "app/mdSysTray.h"

#include <algorithm>
#include <cstddef>

#include "app/quellix_ids.h"
#include "platform/handles.h"
#include "platform/system_functions.h"

namespace app {
using namespace platform;

namespace {
constexpr DWORD kRecordSize = 88;  // of the first version, the one that every taskbar knows
constexpr std::size_t kTipSize = 64;
static_assert(offsetof(NOTIFYICONDATAA, szTip) + kTipSize == kRecordSize);
}  // namespace

void NotificationIcon::Fill(HWND window, HICON icon, const std::string& tip) {
  record_ = {};
  record_.cbSize = kRecordSize;
  record_.hWnd = window;
  record_.uID = kTrayIconId;
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = kTrayCallback;
  record_.hIcon = icon;
  std::copy_n(tip.begin(), std::min(tip.size(), kTipSize - 1), record_.szTip);
  // A program that runs as administrator is otherwise not told of a new taskbar, which does not.
  constexpr DWORD kLetThrough = 1;  // MSGFLT_ADD
  quietly([this] { late::ChangeWindowMessageFilter(taskbarCreated_, kLetThrough); });
}

// A taskbar that is slow, as it is at the log-on, may have added the icon and answered too late: adding it again then fails,
// and changing it does not.
void NotificationIcon::Add() {
  wanted_ = true;
  isThere_ = late::ShellNotifyIcon(NIM_ADD, &record_) || late::ShellNotifyIcon(NIM_MODIFY, &record_);
  lastTry_ = ::GetTickCount();  // from the end of a try, which may take seconds
}

void NotificationIcon::Remove() {
  wanted_ = isThere_ = false;
  late::ShellNotifyIcon(NIM_DELETE, &record_);
}

bool NotificationIcon::TakeTaskbarNews(UINT message) {
  if (taskbarCreated_ == 0 || message != taskbarCreated_) return false;
  if (wanted_) Add();
  return true;
}

TrayAction NotificationIcon::ActionOf(WPARAM wParam, LPARAM lParam) const {
  if (record_.hWnd == nullptr) return TrayAction::None;  // a move during the start
  const DWORD place = ::GetMessagePos();
  POINT mouse{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
  ::ScreenToClient(record_.hWnd, &mouse);
  return TrayActionOf(wParam, static_cast<std::uintptr_t>(lParam),
                      static_cast<std::uintptr_t>(MAKELPARAM(mouse.x, mouse.y)));
}

void NotificationIcon::TryAgain() {
  constexpr DWORD kEvery = 2000;
  if (!wanted_ || isThere_ || ::GetTickCount() - lastTry_ < kEvery) return;
  Add();
}

void NotificationIcon::ShowMenu() const {
  const UniqueMenu menu(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDM_mPopupSys)));
  POINT mouse;
  ::GetCursorPos(&mouse);
  ::TrackPopupMenu(::GetSubMenu(menu.get(), 0), TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, record_.hWnd, nullptr);
  ::PostMessageA(record_.hWnd, WM_NULL, 0, 0);  // lets the menu close at the next click elsewhere
}

}  // namespace app
