#include "cleaners/locked_files.h"

#include "platform/win32.h"

namespace cleaners {

bool TryWhileLocked(bool (*attempt)(void* about), void* about) {
  for (int tries = 1;; ++tries) {
    if (attempt(about)) return true;
    const DWORD reason = ::GetLastError();
    if (reason != ERROR_SHARING_VIOLATION || !LockedFiles.MayTryAgain(tries)) {
      ::SetLastError(reason);
      return false;
    }
    ::Sleep(Patience::kPause);
  }
}

}  // namespace cleaners
