// The windows that are open over another one: boxes, dialogs, and what is open over those.
#pragma once

#include "platform/win32.h"

namespace platform {

// The window that has the keyboard while the program asks something: the main window, or what is open over it and disables
// it. `mainWindow` may belong to another process.
HWND WindowInFront(HWND mainWindow);

// Takes what is open over the window out of sight with it, or brings that back. The system does it for the nearest windows
// only.
void ShowWindowsOver(HWND window, bool shown);

}  // namespace platform
