#include "cleaners/mdPanic.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/tick_count.h"
#include "platform/win32.h"
#include "platform/window_text.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr char kBrowserFrame[] = "IEFrame";
constexpr std::uint32_t kAskAgainAfter = 100;  // milliseconds

// Between CloseWindowByTitle and the test that the system calls for each window. A report lets window events run, and one of
// them may begin another search.
struct TitleSearch {
  std::string title;
  HWND found = nullptr;
};
TitleSearch titleSearch;

// True goes on with the next window; an error ends the search.
BOOL CALLBACK CheckAllWindows(HWND window, LPARAM) {
  BOOL goOn = FALSE;
  reportAndLeave("mdPanic,CheckAllWindows", [&] {
    const bool found = TextOfWindow(window).find(titleSearch.title) != std::string::npos;
    if (found) titleSearch.found = window;
    goOn = found ? FALSE : -1;
  });
  return goOn;
}

// The uppermost frame that is none of those; null for none.
HWND FindFrame(const std::vector<HWND>& exceptFor) {
  HWND frame = nullptr;
  do {
    frame = ::FindWindowExA(nullptr, frame, kBrowserFrame, nullptr);
  } while (frame != nullptr && std::find(exceptFor.begin(), exceptFor.end(), frame) != exceptFor.end());
  return frame;
}

// All of the time, however many events come meanwhile: a browser would otherwise be asked at each move of the mouse.
void LetTimePass(std::uint32_t milliseconds) {
  const std::uint32_t end = ::GetTickCount() + milliseconds;
  for (std::int32_t left = MillisecondsUntil(end, ::GetTickCount()); left > 0;
       left = MillisecondsUntil(end, ::GetTickCount()))
    WaitForEvents(static_cast<std::uint32_t>(left));
}

}  // namespace

void CloseBrowserFrames() {
  DoEvents();
  std::vector<HWND> outOfReach;
  for (;;) {
    const HWND frame = FindFrame(outOfReach);
    if (frame == nullptr || ::IsWindow(frame) != 1) return;
    if (::PostMessageA(frame, WM_CLOSE, 1, 1))
      LetTimePass(kAskAgainAfter);
    else
      outOfReach.push_back(frame);
  }
}

void CloseWindowByTitle(const char* title) {
  const TitleSearch around = std::exchange(titleSearch, {title});
  ::EnumWindows(&CheckAllWindows, 0);
  const HWND found = std::exchange(titleSearch, around).found;
  if (found != nullptr) ::PostMessageA(found, WM_CLOSE, 0, 0);
}

void MinimiseAllWindows() {
  constexpr WPARAM kMinimiseAll = 419;
  const HWND taskbar = ::FindWindowA("Shell_TrayWnd", nullptr);
  if (taskbar != nullptr) ::PostMessageA(taskbar, WM_COMMAND, kMinimiseAll, 0);
}

}  // namespace cleaners
