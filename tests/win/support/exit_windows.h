// Takes the place of ExitWindowsEx in the test program that includes this, in its one source: it writes the call down
// and ends nothing.
#pragma once

#include <vector>

#include "platform/win32.h"

struct ExitWindowsCall {
  UINT flags;
  DWORD reserved;
  friend bool operator==(const ExitWindowsCall&, const ExitWindowsCall&) = default;
};
inline std::vector<ExitWindowsCall> ExitWindowsCalls;
inline BOOL ExitWindowsAnswer = TRUE;

inline BOOL WINAPI RecordExitWindows(UINT flags, DWORD reserved) {
  ExitWindowsCalls.push_back({flags, reserved});
  ::SetLastError(ExitWindowsAnswer ? ERROR_SUCCESS : ERROR_PRIVILEGE_NOT_HELD);
  return ExitWindowsAnswer;
}

// The import pointer itself: with it defined here, the linker takes none from the system's library.
extern "C" {
extern const void* const importExitWindowsEx __asm__("__imp__ExitWindowsEx@8");
const void* const importExitWindowsEx = reinterpret_cast<const void*>(&RecordExitWindows);
}
