#include "automation/modHide.h"

#include <cstring>

#include "automation/task_list_rule.h"
#include "platform/os_name.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"

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

BOOL CALLBACK HideWhenBrowser(HWND window, LPARAM) {
  char name[255] = "";
  ::GetClassNameA(window, name, sizeof name);
  if (std::strcmp(name, "IEFrame") != 0) return TRUE;
  resumeNext([window] {
    BrowserPlacement& last = SavedBrowserPlacements.back();
    last.window = window;
    last.placement.length = kPlacementSize;
    ::GetWindowPlacement(window, &last.placement);
    WINDOWPLACEMENT hidden = last.placement;
    SavedBrowserPlacements.emplace_back();
    hidden.showCmd = SW_HIDE;
    ::SetWindowPlacement(window, &hidden);
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
  SavedBrowserPlacements.assign(1, {});
  ::EnumWindows(&HideWhenBrowser, 0);
}

void RestoreBrowserWindows() {
  for (auto saved = SavedBrowserPlacements.rbegin(); saved != SavedBrowserPlacements.rend(); ++saved)
    if (saved->window != nullptr) ::SetWindowPlacement(saved->window, &saved->placement);
}

}  // namespace automation
