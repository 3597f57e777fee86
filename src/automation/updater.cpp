#include "automation/updater.h"

#include "platform/message_box.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/start_program.h"

namespace automation {
using namespace platform;

void StartUpdater() {
  const Path updater = ProgramFolder() / Wide<"Update.exe">();
  const DWORD attributes = NativeAttributes(updater);
  if (attributes == INVALID_FILE_ATTRIBUTES || IsFolder(attributes)) {
    ShowMessage("Your update files is missing. Please reinstall Quellix", MB_ICONSTOP);
    return;
  }
  StartProgram(updater, {}, SW_SHOWMINIMIZED);
}

}  // namespace automation
