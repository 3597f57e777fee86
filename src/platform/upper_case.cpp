// Apart from the rest of wide_system.h, so that a program without windows takes nothing of the library that they come from.
#include "platform/system_functions.h"
#include "platform/wide_system.h"
#include "platform/win32.h"

namespace platform {

WideText UpperCase(WideView text) {
  WideText upper(text);
  if (UsesWideNames()) {
    late::CharUpperBuffWide(upper.data(), static_cast<DWORD>(upper.size()));
    return upper;
  }
  std::string ansi = NarrowLike(text);
  ::CharUpperBuffA(ansi.data(), static_cast<DWORD>(ansi.size()));
  return Widen(ansi);
}

}  // namespace platform
