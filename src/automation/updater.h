// The button "Check for Update".
#pragma once

#include "platform/win32.h"

namespace automation {

// Starts "Update.exe" of the program's folder, minimised, and goes on; tells when it is missing.
void StartUpdater(HWND owner);

}  // namespace automation
