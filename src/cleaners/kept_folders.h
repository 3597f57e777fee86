// The folders that no cleaner and no shredder may empty or remove, whoever asks.
#pragma once

#include <vector>

#include "platform/path.h"

namespace cleaners {
using namespace platform;

// What follows from a system that lacks the shell's function for its folders: an error, which leaves nothing to be emptied,
// or that the folders that Windows, its registry and the environment tell are all there are.
enum class Untold { Raises, IsLeftOut };

// Folders that belong to all: Windows, its system folder, Program Files and Common Files of both kinds on 64-bit systems,
// and what all users share. A path is empty where the system does not tell one. What lies inside one of them was not chosen
// by a user of this computer, unless that user names it.
std::vector<Path> SharedFolders(Untold untold = Untold::Raises);

// Those, then the user's: profile, desktop, documents, start menu and the like. The program's own folder is none of them.
// `shared` is what SharedFolders gives: the system takes its time over each folder.
std::vector<Path> KeptFolders(std::vector<Path> shared, Untold untold = Untold::Raises);

}  // namespace cleaners
