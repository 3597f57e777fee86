#include "cleaners/mdPanic.h"

#include <string>

#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/win32.h"
#include "platform/window_text.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kBrowserFrame[] = "IEFrame";
constexpr std::uint32_t kAskAgainAfter = 100;  // milliseconds

// Between CloseWindowByTitle and the test that the system calls for each window.
std::string soughtTitle;
HWND foundWindow = nullptr;

// True goes on with the next window; an error ends the search.
BOOL CALLBACK CheckAllWindows(HWND window, LPARAM) {
  BOOL goOn = FALSE;
  reportAndLeave("mdPanic,CheckAllWindows", [&] {
    const bool found = TextOfWindow(window).find(soughtTitle) != std::string::npos;
    if (found) foundWindow = window;
    goOn = found ? FALSE : -1;
  });
  return goOn;
}

}  // namespace

void CloseBrowserFrames() {
  DoEvents();
  for (;;) {
    const HWND frame = ::FindWindowA(kBrowserFrame, nullptr);
    if (frame == nullptr || ::IsWindow(frame) != 1) return;
    ::PostMessageA(frame, WM_CLOSE, 1, 1);
    WaitForEvents(kAskAgainAfter);
  }
}

void CloseWindowByTitle(const char* title) {
  soughtTitle = title;
  foundWindow = nullptr;
  ::EnumWindows(&CheckAllWindows, 0);
  if (foundWindow != nullptr) ::PostMessageA(foundWindow, WM_CLOSE, 0, 0);
}

void MinimiseAllWindows() {
  constexpr WPARAM kMinimiseAll = 419;
  const HWND taskbar = ::FindWindowA("Shell_TrayWnd", nullptr);
  if (taskbar != nullptr) ::PostMessageA(taskbar, WM_COMMAND, kMinimiseAll, 0);
}

}  // namespace cleaners
