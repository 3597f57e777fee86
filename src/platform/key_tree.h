// The deletion of a registry key with all that is below it.
#pragma once

#include "platform/win32.h"

namespace platform {

// Key by key on the NT family; on Windows 9x by the shell's function where there is one (Internet Explorer 4), else by the
// system's own. What cannot be deleted stays, with the keys above it; the rest goes. A link goes as a link, and a path
// through one is refused. So is an empty path, since it would mean everything below the root. Gives the error code of the
// first failure; a missing key is one.
// What it deletes is told to the run's tally.
LONG DeleteKeyTree(HKEY root, const char* path);

// A key with the keys in it, and its own values; nothing for a missing one.
struct KeyContents {
  int keys = 0, values = 0;
};
KeyContents ContentsOfKey(HKEY root, const char* path);

}  // namespace platform
