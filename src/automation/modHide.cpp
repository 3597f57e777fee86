#include "automation/modHide.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "automation/task_list_rule.h"
#include "platform/os_name.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "platform/window_answers.h"

namespace automation {
using namespace platform;

namespace {

constexpr DWORD kVisibleProcess = 0;
constexpr DWORD kHiddenProcess = 1;
constexpr UINT kPlacementSize = 44;
static_assert(sizeof(WINDOWPLACEMENT) == kPlacementSize && sizeof(BrowserPlacement) == 48);

void SetTaskListState(DWORD state) {
  resumeNext([state] {
    if (HasTaskListCall(OsName)) late::RegisterServiceProcess(::GetCurrentProcessId(), state);
  });
}

bool IsBrowser(HWND window) {
  char name[255] = "";
  ::GetClassNameA(window, name, sizeof name);
  return std::strcmp(name, "IEFrame") == 0;
}

// Windows 2000 and later place another thread's window without waiting for it when they are asked to.
bool PlacesWithoutWaiting() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = 148;
  return ::GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT && version.dwMajorVersion >= 5;
}

// Windows that did not answer in time, each with the place that it gets once it does.
std::vector<BrowserPlacement> awaited;

void CALLBACK PlaceAwaited(HWND window, UINT, ULONG_PTR, LRESULT) {
  const auto found = std::ranges::find(awaited, window, &BrowserPlacement::window);
  if (found == awaited.end()) return;
  const WINDOWPLACEMENT placement = found->placement;
  awaited.erase(found);
  if (IsBrowser(window)) ::SetWindowPlacement(window, &placement);
}

// The answer comes through the message loop, whenever the window gives it.
void PlaceOnceItAnswers(HWND window, const WINDOWPLACEMENT& placement) {
  awaited.push_back({window, placement});
  ::SendMessageCallbackA(window, WM_NULL, 0, 0, &PlaceAwaited, 0);
}

// A window that hangs or is at work keeps nobody waiting: it follows once it works again.
void Place(HWND window, WINDOWPLACEMENT placement) {
  constexpr UINT kAsync = 4;  // WPF_ASYNCWINDOWPLACEMENT
  if (PlacesWithoutWaiting())
    placement.flags |= kAsync;
  else if (!AnswersWithin(200, window))
    return PlaceOnceItAnswers(window, placement);
  ::SetWindowPlacement(window, &placement);
}

BOOL CALLBACK HideWhenBrowser(HWND window, LPARAM) {
  if (!IsBrowser(window)) return TRUE;
  resumeNext([window] {
    BrowserPlacement& last = SavedBrowserPlacements.back();
    last.window = window;
    last.placement.length = kPlacementSize;
    ::GetWindowPlacement(window, &last.placement);
    WINDOWPLACEMENT hidden = last.placement;
    SavedBrowserPlacements.emplace_back();
    hidden.showCmd = SW_HIDE;
    Place(window, hidden);
  });
  return TRUE;
}

}  // namespace

void HideFromTaskList() { SetTaskListState(kHiddenProcess); }
void UnhideFromTaskList() { SetTaskListState(kVisibleProcess); }

void ShowAndActivate(HWND window) {
  if (!::IsWindowVisible(window)) ::ShowWindow(window, SW_SHOW);
  if (::IsIconic(window)) ::SendMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  ::SetForegroundWindow(window);
}

void HideBrowserWindows() {
  awaited.clear();
  SavedBrowserPlacements.assign(1, {});
  ::EnumWindows(&HideWhenBrowser, 0);
}

void RestoreBrowserWindows() {
  awaited.clear();
  for (auto saved = SavedBrowserPlacements.rbegin(); saved != SavedBrowserPlacements.rend(); ++saved)
    if (saved->window != nullptr && IsBrowser(saved->window)) Place(saved->window, saved->placement);
}

void PlaceAwaitedBrowsers(UINT milliseconds) {
  const DWORD start = ::GetTickCount();
  for (const BrowserPlacement& late : std::exchange(awaited, {})) {
    const DWORD passed = ::GetTickCount() - start;
    if (passed < milliseconds && IsBrowser(late.window) && AnswersWithin(milliseconds - passed, late.window))
      ::SetWindowPlacement(late.window, &late.placement);
  }
}

}  // namespace automation
