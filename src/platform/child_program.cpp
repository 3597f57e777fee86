#include "platform/child_program.h"

#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

template <class Text>
const typename Text::value_type* OrNull(const Text& text) {
  return text.empty() ? nullptr : text.c_str();
}

HINSTANCE StartNarrow(HWND owner, const ShellStart& start) {
  const std::optional<std::string> what = NarrowExactly(start.what);
  if (!what) Raise(kBadFileName);
  const std::string arguments = Narrow(start.arguments);
  const std::string folder = Narrow(start.folder);
  return late::ShellOpen(owner, Narrow(start.verb).c_str(), what->c_str(), OrNull(arguments), OrNull(folder), start.show);
}

// What the shell answers when it starts nothing: the system's reason, with two of its own among them.
void RaiseUnlessStarted(HINSTANCE answer) {
  constexpr UINT_PTR kSharing = 26;
  constexpr UINT_PTR kNoDll = 32;
  constexpr UINT_PTR kHighestError = 32;
  const auto code = reinterpret_cast<UINT_PTR>(answer);
  if (code > kHighestError) return;
  if (code == 0) Raise(kOutOfMemory);
  if (code == kSharing) Raise(kPermissionDenied);
  if (code == kNoDll) Raise(kDllNotLoaded);
  RaiseSystemError(static_cast<DWORD>(code));
}

}  // namespace

void StartByShell(HWND owner, const ShellStart& start) {
  const OwnErrorModeForChildren ownErrorMode;
  RaiseUnlessStarted(UsesWideNames() ? late::ShellOpenWide(owner, start.verb.c_str(), start.what.c_str(),
                                                           OrNull(start.arguments), OrNull(start.folder), start.show)
                                     : StartNarrow(owner, start));
}

}  // namespace platform
