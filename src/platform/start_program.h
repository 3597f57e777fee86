// Starting another program of this computer.
#pragma once

#include "platform/path.h"

namespace platform {

// By its full path, in quotes, so that a folder with a blank in it starts no other program. `show` is that of ShowWindow,
// and the arguments follow the path after a blank. False when it cannot be started. It is not waited for.
bool StartProgram(const Path& program, WideView arguments, int show);

// Whether this process has rights that other programs of its user have not (Windows Vista and later): what it starts has
// them too.
bool IsElevated();

}  // namespace platform
