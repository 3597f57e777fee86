#include "platform/told_of_files.h"

#include "platform/runtime_error.h"
#include "platform/wide_system.h"
#include "platform/win32.h"

namespace platform {

bool Told(bool isDone, Trace what, const Path& path, std::uint64_t bytes) {
  const DWORD reason = ::GetLastError();
  if (isDone)
    TellErasedWith(what, bytes);
  else
    TellStayed(path, WhyOf(reason), reason);
  ::SetLastError(reason);
  return isDone;
}

void TellStayed(const Path& path, Why why, std::uint32_t systemError) {
  if (Listening != nullptr) TellStayed(valueOr(WideText(), [&] { return path.Shown(); }), why, systemError);
}

void TellStayed(const char* name, Why why, std::uint32_t systemError) {
  if (Listening != nullptr) TellStayed(valueOr(WideText(), [&] { return Widen(name); }), why, systemError);
}

void TellDifference(Trace what, int before, int after, const char* name) {
  if (after < before) TellErased(what, before - after);
  if (after > 0) TellStayed(name, Why::LeftByWindows);
}

}  // namespace platform
