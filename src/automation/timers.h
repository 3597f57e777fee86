// The main window's timers. A tick comes to the window, which hands it to the owners in turn.
#pragma once

#include "platform/win32.h"

namespace automation {

enum Timer : UINT_PTR { timeHide = 1, timerScheduler, downtimer };

}  // namespace automation
