#include "automation/updater.h"

#include "platform/message_box.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"

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
    return late::CreateProcessWide(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &process) != 0;
  return ::CreateProcessA(Narrow(program).c_str(), Narrow(commandLine).data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          reinterpret_cast<STARTUPINFOA*>(&startup), &process) != 0;
}

}  // namespace

void StartUpdater() {
  const Path updater = ProgramFolder() / Wide<"Update.exe">();
  const DWORD attributes = NativeAttributes(updater);
  if (attributes == INVALID_FILE_ATTRIBUTES || IsFolder(attributes)) {
    ShowMessage("Your update files is missing. Please reinstall Quellix", MB_ICONSTOP);
    return;
  }
  PROCESS_INFORMATION process{};
  if (!StartMinimised(updater.Shown(), process)) return;
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
}

}  // namespace automation
