#include "platform/start_program.h"

#include <utility>

#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

bool Start(const WideText& program, WideText commandLine, STARTUPINFOW& startup, PROCESS_INFORMATION& process) {
  static_assert(sizeof(STARTUPINFOW) == sizeof(STARTUPINFOA),
                "the two differ in the kind of their texts, of which none is set");
  if (UsesWideNames())
    return late::CreateProcessWide(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &process) != 0;
  return ::CreateProcessA(Narrow(program).c_str(), Narrow(commandLine).data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          reinterpret_cast<STARTUPINFOA*>(&startup), &process) != 0;
}

}  // namespace

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
