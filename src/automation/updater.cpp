#include "automation/updater.h"

#include <string>

#include "platform/child_program.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_error.h"

namespace automation {
using namespace platform;

namespace {

// The system takes a program of this name for an installer: from Windows Vista on only the shell starts it, after it has
// asked for consent.
void Start(const Path& program) {
  constexpr DWORD kWantsElevation = 740;
  if (StartProgram(program, {}, SW_SHOWMINIMIZED)) return;
  const DWORD reason = ::GetLastError();
  if (reason != kWantsElevation) RaiseSystemError(reason);
  StartByShell(MainWindowHandle, {.verb = L"open", .what = program.Shown(), .show = SW_SHOWMINIMIZED});
}

}  // namespace

void StartUpdater() {
  const Path updater = ProgramFolder() / Wide<"Update.exe">();
  const DWORD attributes = NativeAttributes(updater);
  if (attributes == INVALID_FILE_ATTRIBUTES || IsFolder(attributes)) {
    ShowMessage("Your update files is missing. Please reinstall Quellix", MB_ICONSTOP);
    return;
  }
  if (const RuntimeError failure = failureOf([&] { Start(updater); }))
    ShowMessage(std::string("The update could not be started (") + failure.description + ").", MB_ICONSTOP);
}

}  // namespace automation
