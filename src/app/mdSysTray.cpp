#include "app/mdSysTray.h"

#include <algorithm>
#include <cstddef>

#include "app/tray_callback.h"
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
  onShow_ = true;
  late::ShellNotifyIcon(NIM_ADD, &record_);
}

void NotificationIcon::Remove() {
  onShow_ = false;
  late::ShellNotifyIcon(NIM_DELETE, &record_);
}

}  // namespace app
