// Where a folder really is, on every system.
#pragma once

#include "platform/path.h"

namespace platform {

// The folder's path with every link on the way followed and substituted drives of Windows 9x replaced by their folders.
// Empty for a missing folder of the NT family, and for one whose way cannot be told.
Path FinalPath(const Path& folder);

// Whether the folder is the uppermost of a volume, wherever that one shows up. Windows 2000 and later tell it; earlier ones
// have volumes at roots only.
bool IsVolumeRoot(const Path& folder);

}  // namespace platform
