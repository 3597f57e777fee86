// The folders that no cleaner and no shredder may empty or remove, whoever asks.
#pragma once

#include <vector>

#include "platform/path.h"

namespace cleaners {
using namespace platform;

// Folders that belong to all: Windows, its system folder, Program Files and Common Files of both kinds on 64-bit systems,
// and what all users share. A path is empty where the system does not tell one. What lies inside one of them was not chosen
// by a user of this computer, unless that user names it.
std::vector<Path> SharedFolders();

// Those and the user's: profile, desktop, documents, start menu and the like. The program's own folder is none of them.
std::vector<Path> KeptFolders();

}  // namespace cleaners
