// The system's file-open dialog.
#pragma once

#include <vector>

#include "platform/path.h"
#include "platform/win32.h"

namespace shred {
using namespace platform;

// The files that the user chose; none when the dialog was cancelled. Raises the dialog's own error, 20476 for example for an
// answer that is longer than its buffer of 2,048 characters. The current folder stays what it was.
std::vector<Path> AskForFiles(HWND owner);

}  // namespace shred
