// The text of the file that keeps the scheduled list: a path a line, nothing else.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace shred {

// The lines as they stand, whatever is in them; CR LF or LF ends one, and the last one may stand without. NUL bytes, which
// no list can hold, are left out.
std::vector<std::string> ReadListFile(std::string_view text);

// Each path followed by CR LF.
std::string ListFileText(const std::vector<std::string>& paths);

}  // namespace shred
