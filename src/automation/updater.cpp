#include "automation/updater.h"

#include "platform/message_box.h"
#include "platform/special_folder.h"

namespace automation {
using namespace platform;

void StartUpdater() {
  const std::string updater = ProgramFolder() + "\\Update.exe";
  const DWORD attributes = ::GetFileAttributesA(updater.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    ShowMessage("Your update files is missing. Please reinstall Quellix", MB_ICONSTOP);
    return;
  }
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWMINIMIZED;
  PROCESS_INFORMATION process{};
  // The path in quotes and as the module's name: a folder with a blank in it starts no other program.
  std::string commandLine = "\"" + updater + "\"";
  if (!::CreateProcessA(updater.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
    return;
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
}

}  // namespace automation
