// What a deletion of a file or folder tells the run's tally.
#pragma once

#include <cstdint>

#include "platform/path.h"
#include "platform/tally.h"

namespace platform {

// `isDone` is what the deletion answered, with the reason in GetLastError, which is left as it is; returned as it is.
bool Told(bool isDone, Trace what, const Path& path, std::uint64_t bytes = 0);

// It stays, for a reason that the system was not asked for.
inline void TellStayed(Trace what, const Path& path, Why why) { TellStayed(what, path.Shown(), why); }

}  // namespace platform
