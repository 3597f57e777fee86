// What the system tells of a folder that is to be emptied or removed.
#pragma once

#include "cleaners/folder_guard.h"

namespace cleaners {

// The facts about `folder`. Paths of `keep` may be empty.
FolderFacts FindFolderFacts(const Path& folder, const std::vector<Path>& keep);

// Windows, its system folder, Program Files, the program's own folder and the profile; an empty path for each that the
// system does not tell.
std::vector<Path> SystemFolders();

}  // namespace cleaners
