// Names that a folder walk has done with.
#pragma once

#include <vector>

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

// True when some entry equals `name` with the blanks at both ends of `name` taken away; case counts.
bool IsListed(const std::vector<WideText>& names, WideView name);

}  // namespace cleaners
