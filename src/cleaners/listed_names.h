// Names that a folder walk has done with.
#pragma once

#include <string>
#include <vector>

namespace cleaners {

// True when some entry equals `name` with the blanks at both ends of `name` taken away; case counts.
bool IsListed(const std::vector<std::string>& names, const std::string& name);

}  // namespace cleaners
