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
}

void NotificationIcon::Add() {
  wanted_ = true;
  late::ShellNotifyIcon(NIM_ADD, &record_);
}

void NotificationIcon::Remove() {
  wanted_ = false;
  late::ShellNotifyIcon(NIM_DELETE, &record_);
}

bool NotificationIcon::TakeTaskbarNews(UINT message) {
  if (taskbarCreated_ == 0 || message != taskbarCreated_) return false;
  if (wanted_) Add();
  return true;
}

TrayAction NotificationIcon::ActionOf(WPARAM wParam, LPARAM lParam) const {
  return TrayActionOf(wParam, static_cast<std::uintptr_t>(lParam), ::GetKeyState(VK_LBUTTON) < 0);
}

void NotificationIcon::ShowMenu() const {
  const UniqueMenu menu(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDM_mPopupSys)));
  POINT mouse;
  ::GetCursorPos(&mouse);
  ::TrackPopupMenu(::GetSubMenu(menu.get(), 0), TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, record_.hWnd, nullptr);
  ::PostMessageA(record_.hWnd, WM_NULL, 0, 0);  // lets the menu close at the next click elsewhere
}

}  // namespace app
