// Module-level state of the file wipers and registry cleaners.
#pragma once

#include <cstdint>

namespace cleaners {

// Passes that the file wipers overwrite before they delete. Nothing assigns it, so they delete without overwriting: a
// run over thousands of cache files stays short. The pass loop is ready for any other number.
inline std::int16_t WipePasses = 0;

// Keys that ClearFind opened or tried to open since the program started.
inline std::int32_t CleanedKeyCount = 0;

}  // namespace cleaners
