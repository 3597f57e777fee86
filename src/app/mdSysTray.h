// The icon in the notification area of the taskbar.
#pragma once

#include <string>

#include "platform/win32.h"

#include <shellapi.h>

namespace app {

constexpr UINT kTrayCallback = 512;  // WM_MOUSEMOVE; see tray_callback.h

class NotificationIcon {
 public:
  // Fills the record; the tip is cut after 63 characters.
  void Fill(HWND window, HICON icon, const std::string& tip);
  void Add();
  void Remove();
  bool OnShow() const { return onShow_; }

 private:
  NOTIFYICONDATAA record_{};
  bool onShow_ = false;
};

}  // namespace app
