// The stop request of an erase run. False when the program starts, true after the first run: the flag is cleared just
// before a run from the Erase panel, and nowhere else. Read by the run before each item and by the long cleaners.
#pragma once

namespace platform {

inline bool StopErase = false;

}  // namespace platform
