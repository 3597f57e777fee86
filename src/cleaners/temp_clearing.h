// Emptying the temporary folder, from which the program itself may have been started.
#pragma once

#include "platform/path.h"

namespace cleaners {
using namespace platform;

// ClearFolderContents of the folder and its subfolders. Where the program's own folder lies in it, that one stays with all
// that it holds, and so do the folders on the way to it; everything else goes.
void ClearTempFolder(const Path& folder);

}  // namespace cleaners
