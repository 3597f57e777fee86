// One running Quellix: the second one brings the first forward and ends.
#pragma once

#include "platform/win32.h"

namespace app {

// Starts that come at one moment take turns, from the look for another instance to the window that the next one finds: each
// would otherwise find none. Waits for ten seconds at most.
class StartTurn {
 public:
  StartTurn();
  StartTurn(const StartTurn&) = delete;
  StartTurn& operator=(const StartTurn&) = delete;
  ~StartTurn();

 private:
  HANDLE turn_;
};

// Ends the process when another instance is running. Leaves AppTitle changed, as the settings need it (app_title.h).
void ShowPrevInstance();

// The hidden window that a later instance finds. Its class is "QuellixMain", its title stays "Quellix"; the main window
// is owned by it and so comes just before it in the z-order. Created after the check, so that a process never finds
// itself. Null on failure.
HWND CreateInstanceWindow();

constexpr char kMainWindowClass[] = "frmMain";

}  // namespace app
