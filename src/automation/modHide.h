// Bringing the main window back, and the process into the task list.
#pragma once

#include "platform/win32.h"

// Shows the window when it is hidden, restores it when it is minimised, brings it to the foreground.
void ShowAndActivate(HWND window);

// Makes the process visible in the task list of Windows 9x; nothing on the NT family, whose systems lack the call.
void UnhideFromTaskList();
