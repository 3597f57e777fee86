#include "platform/told_of_files.h"

#include "platform/runtime_error.h"
#include "platform/win32.h"

namespace platform {

bool Told(bool isDone, Trace what, const Path& path, std::uint64_t bytes) {
  if (Listening == nullptr) return isDone;
  const DWORD reason = ::GetLastError();
  if (isDone)
    TellErased(what, 1, bytes);
  else
    quietly([&] { TellStayed(what, path.Shown(), WhyOf(reason), reason); });
  ::SetLastError(reason);
  return isDone;
}

}  // namespace platform
