#include "automation/updater.h"

#include <string>

#include "platform/child_program.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace automation {
using namespace platform;

namespace {

// The path in quotes and as the module's name: a folder with a blank in it starts no other program.
bool StartMinimised(const WideText& program, PROCESS_INFORMATION& process) {
  STARTUPINFOW startup{};
  static_assert(sizeof(STARTUPINFOW) == sizeof(STARTUPINFOA),
                "the two differ in the kind of their texts, of which none is set");
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWMINIMIZED;
  WideText commandLine = L'"' + program + L'"';
  if (UsesWideNames())
    return late::CreateProcessWide(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                                   nullptr, nullptr, &startup, &process) != 0;
  return ::CreateProcessA(Narrow(program).c_str(), Narrow(commandLine).data(), nullptr, nullptr, FALSE,
                          CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr, reinterpret_cast<STARTUPINFOA*>(&startup),
                          &process) != 0;
}

// The system takes a program of this name for an installer: from Windows Vista on only the shell starts it, after it has
// asked for consent.
void Start(const WideText& program) {
  constexpr DWORD kWantsElevation = 740;
  PROCESS_INFORMATION process{};
  if (StartMinimised(program, process)) {
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return;
  }
  const DWORD reason = ::GetLastError();
  if (reason != kWantsElevation) RaiseSystemError(reason);
  StartByShell(MainWindowHandle, {.verb = L"open", .what = program, .show = SW_SHOWMINIMIZED});
}

}  // namespace

void StartUpdater() {
  const Path updater = ProgramFolder() / Wide<"Update.exe">();
  const DWORD attributes = NativeAttributes(updater);
  if (attributes == INVALID_FILE_ATTRIBUTES || IsFolder(attributes)) {
    ShowMessage("Your update files is missing. Please reinstall Quellix", MB_ICONSTOP);
    return;
  }
  if (const RuntimeError failure = failureOf([&] { Start(updater.Shown()); }))
    ShowMessage(std::string("The update could not be started (") + failure.description + ").", MB_ICONSTOP);
}

}  // namespace automation
