// What the folder picker lists. Names are ANSI; one that the code page cannot hold stands in its short form.
#pragma once

#include <string>
#include <vector>

namespace shred {

// The drives of the machine: "A:", "C:", ...
std::vector<std::string> Drives();

// The folders in a folder, hidden ones included, links left out, in alphabetic order. Raises the system's error when it
// cannot be read.
std::vector<std::string> Subfolders(const std::string& folder);

}  // namespace shred
