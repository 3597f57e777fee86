// The system's file-open dialog.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

namespace shred {

// The full paths that the user chose; none when the dialog was cancelled. Raises the dialog's own error, 20476 say for an
// answer that is longer than its buffer of 2,048 characters. The current folder stays what it was.
std::vector<std::string> AskForFiles(HWND owner);

}  // namespace shred
