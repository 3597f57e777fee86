// The deletion of a registry key with all that is below it.
#pragma once

#include "platform/win32.h"

namespace platform {

// By the shell's function where there is one (Internet Explorer 4), by the system's own ones elsewhere. What cannot be
// deleted stays, with the keys above it; the rest goes. A link goes as a link. An empty path is refused, since it would mean
// everything below the root. Gives the error code of the first failure; a missing key is one.
LONG DeleteKeyTree(HKEY root, const char* path);

}  // namespace platform
