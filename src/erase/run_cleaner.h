// From an item's cleaner to the procedures that do its work.
#pragma once

#include "erase/catalogue.h"

namespace erase {

void RunCleaner(Cleaner cleaner);

}  // namespace erase
