// A short question before a call that waits for another thread's window.
#pragma once

#include "platform/win32.h"

namespace platform {

// False for a window whose thread does not answer within the time: it hangs, or is at work.
inline bool AnswersWithin(UINT milliseconds, HWND window) {
  DWORD_PTR answer = 0;
  return ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, milliseconds, &answer) != 0;
}

}  // namespace platform
