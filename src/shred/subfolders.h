// What the folder picker lists.
#pragma once

#include <string>
#include <vector>

#include "platform/path.h"

namespace shred {
using namespace platform;

// The drives of the machine: "A:", "C:", ...
std::vector<std::string> Drives();

// The names of the folders in a folder, hidden ones included, links left out, in alphabetic order. Raises the system's error
// when it cannot be read.
std::vector<WideText> Subfolders(const Path& folder);

}  // namespace shred
