#include "automation/modHide.h"

#include "automation/task_list_rule.h"
#include "platform/os_name.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"

namespace {
constexpr DWORD kVisibleProcess = 0;
}

void ShowAndActivate(HWND window) {
  if (!::IsWindowVisible(window)) ::ShowWindow(window, SW_SHOW);
  if (::IsIconic(window)) ::SendMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  ::SetForegroundWindow(window);
}

void UnhideFromTaskList() {
  resumeNext([] {
    if (HasTaskListCall(OsName)) late::RegisterServiceProcess(::GetCurrentProcessId(), kVisibleProcess);
  });
}
