// A window whose messages a test sees before the window itself does.
#pragma once

#include <map>
#include <optional>

#include "platform/win32.h"

using namespace platform;

// One at a time for a window, on the window's own thread.
class WatchedWindow {
 public:
  WatchedWindow(const WatchedWindow&) = delete;
  WatchedWindow& operator=(const WatchedWindow&) = delete;

 protected:
  explicit WatchedWindow(HWND window) : window_(window) {
    watchers_[window] = this;
    original_ = ::SetWindowLongA(window, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<LONG_PTR>(&Procedure)));
  }
  ~WatchedWindow() {
    ::SetWindowLongA(window_, GWL_WNDPROC, original_);
    watchers_.erase(window_);
  }

  HWND Window() const { return window_; }

 private:
  // The answer in the window's place; without one the window answers.
  virtual std::optional<LRESULT> At(UINT message, WPARAM wParam, LPARAM lParam) = 0;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WatchedWindow& watcher = *watchers_.at(window);
    const std::optional<LRESULT> answer = watcher.At(message, wParam, lParam);
    if (answer) return *answer;
    return ::CallWindowProcA(reinterpret_cast<WNDPROC>(static_cast<LONG_PTR>(watcher.original_)), window, message, wParam,
                             lParam);
  }

  static inline std::map<HWND, WatchedWindow*> watchers_;
  HWND window_;
  LONG original_;
};
