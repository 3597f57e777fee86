// What the system tells of a folder that is to be emptied or removed.
#pragma once

#include "cleaners/folder_guard.h"

namespace cleaners {

// The facts about `folder`, a full path with or without "\" behind it. `keep` holds full paths, empty ones among them.
FolderFacts FindFolderFacts(const std::string& folder, const std::vector<std::string>& keep);

// Windows, its system folder, Program Files, the program's own folder and the profile; an empty text for each that the
// system does not tell.
std::vector<std::string> SystemFolders();

// The text of an environment variable; empty when it is not set or no path.
std::string EnvironmentText(const char* name);

}  // namespace cleaners
