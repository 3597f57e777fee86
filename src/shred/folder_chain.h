// The levels of a folder path.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace shred {

// The path up to and including the first ":"; empty when there is none.
std::string DrivePart(std::string_view path);

// The folders to make, outermost first, so that `path` exists: "C:\a\b" gives "C:\a" and "C:\a\b".
std::vector<std::string> FolderChain(std::string_view path);

}  // namespace shred
