#include "platform/child_program.h"

#include <optional>
#include <string>
#include <utility>

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

bool Start(const WideText& program, WideText commandLine, STARTUPINFOW& startup, PROCESS_INFORMATION& process) {
  static_assert(sizeof(STARTUPINFOW) == sizeof(STARTUPINFOA),
                "the two differ in the kind of their texts, of which none is set");
  if (UsesWideNames())
    return late::CreateProcessWide(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                                   nullptr, nullptr, &startup, &process) != 0;
  return ::CreateProcessA(Narrow(program).c_str(), Narrow(commandLine).data(), nullptr, nullptr, FALSE,
                          CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr, reinterpret_cast<STARTUPINFOA*>(&startup),
                          &process) != 0;
}

}  // namespace

void StartByShell(HWND owner, const ShellStart& start) {
  const OwnErrorModeForChildren ownErrorMode;
  RaiseUnlessStarted(UsesWideNames() ? late::ShellOpenWide(owner, start.verb.c_str(), start.what.c_str(),
                                                           OrNull(start.arguments), OrNull(start.folder), start.show)
                                     : StartNarrow(owner, start));
}

bool StartProgram(const Path& program, WideView arguments, int show) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  WideText commandLine = L'"' + program.Shown() + L'"';
  if (!arguments.empty()) commandLine.append(L" ").append(arguments);
  PROCESS_INFORMATION process{};
  if (program.IsEmpty() || !Start(program.Shown(), std::move(commandLine), startup, process)) return false;
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return true;
}

bool IsElevated() {
  constexpr int kElevationType = 18;  // TokenElevationType
  constexpr DWORD kFull = 2;          // TokenElevationTypeFull: its user's other programs have a lesser one
  if (!UsesWideNames() || !late::GetTokenInformation) return false;
  HANDLE opened = nullptr;
  if (!late::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened)) return false;
  DWORD type = 0, length = 0;
  const bool told = late::GetTokenInformation(opened, kElevationType, &type, sizeof type, &length) != 0;
  ::CloseHandle(opened);
  return told && type == kFull;
}

}  // namespace platform
