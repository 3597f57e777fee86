// Taking the program and the browser's windows out of sight, and bringing them back. A failing call is passed over.
#pragma once

#include <vector>

#include "platform/win32.h"

namespace automation {

// Makes the process invisible in the task list of Windows 9x, and visible again; nothing on the NT family, whose systems
// lack the call.
void HideFromTaskList();
void UnhideFromTaskList();

// Shows the window when it is hidden, restores it when it is minimised, brings it to the foreground.
void ShowAndActivate(HWND window);

// A browser window and where it was.
struct BrowserPlacement {
  HWND window = nullptr;
  WINDOWPLACEMENT placement{};
};

// Filled anew by every hiding: a record for each window, and one empty one after them. Hiding twice in a row saves the
// windows as hidden as they are then; a restore shows them all the same.
inline std::vector<BrowserPlacement> SavedBrowserPlacements;

// Every top-level window of the browser's class "IEFrame". Where the system places windows only by waiting for them, one
// that does not answer is placed when it answers, unless the next hiding or restore comes first.
void HideBrowserWindows();

// The saved windows, the last one first; those that are gone are passed over, also where their handle is another window's by
// now.
void RestoreBrowserWindows();

// For the end of the program, after which nobody hears an answer: gives the windows that have not answered yet this time in
// all, places those that do, and forgets the others.
void PlaceAwaitedBrowsers(UINT milliseconds);

}  // namespace automation
