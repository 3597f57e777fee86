// Which window of a program has to come to the front.
#pragma once

#include "platform/win32.h"

namespace app {

// The main window itself; while a question or message of it is open, that one. `mainWindow` may belong to another process.
HWND WindowToBringForward(HWND mainWindow);

}  // namespace app
