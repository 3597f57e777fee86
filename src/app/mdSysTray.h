// The icon in the notification area of the taskbar: its record, whether it is wanted there, its menu, and what a click on it
// means.
#pragma once

#include <string>

#include "app/tray_callback.h"
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

  // The poll: adds a wanted icon that the taskbar did not take, every two seconds.
  void TryAgain();

  // The taskbar has been started anew: the icon that was there is added again. True when the message was that news.
  bool TakeTaskbarNews(UINT message);

  // What the callback message asks for.
  TrayAction ActionOf(WPARAM wParam, LPARAM lParam) const;

  // Shows the menu where the mouse is; a chosen entry comes to the window as a command.
  void ShowMenu() const;

 private:
  NOTIFYICONDATAA record_{};
  bool wanted_ = false;
  bool isThere_ = false;
  DWORD lastTry_ = 0;
  UINT taskbarCreated_ = ::RegisterWindowMessageA("TaskbarCreated");
};

}  // namespace app
