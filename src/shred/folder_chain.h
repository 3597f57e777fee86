// The levels of a folder path.
#pragma once

#include <vector>

#include "platform/path.h"

namespace shred {
using namespace platform;

// The folders to make, outermost first, so that `folder` exists: "C:\a\b" gives "C:\a" and "C:\a\b".
std::vector<Path> FolderChain(const Path& folder);

}  // namespace shred
