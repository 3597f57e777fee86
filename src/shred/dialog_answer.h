// What the system's file-open dialog leaves in its buffer.
#pragma once

#include <vector>

#include "platform/path.h"

namespace shred {
using namespace platform;

// The files that the answer means: one path, or a folder and the names chosen in it, separated by NUL characters and ended
// by two (the explorer-style layout of a multiple selection). A name that is a full path itself, as a user may type it, is
// taken as it is. What leads to no file is left out; what follows the end of the answer is not looked at.
std::vector<Path> SplitDialogAnswer(WideView answer);

// Whether an answer ends within its buffer, which is zeroed before the dialog comes. One that does not was cut off, and its
// last name may be another file's.
bool IsWholeAnswer(WideView buffer);

}  // namespace shred
