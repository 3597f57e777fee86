// From an item's cleaner to the procedures that do its work.
#pragma once

#include "erase/catalogue.h"

void RunCleaner(Cleaner cleaner);
