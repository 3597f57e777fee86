// What the deletion of a file, a folder or whatever else the system has a name for tells the run's tally. None of it raises
// an error, and the last error of the system is what it was before.
#pragma once

#include <cstdint>

#include "platform/path.h"
#include "platform/tally.h"

namespace platform {

// `isDone` is what the deletion answered, with the reason in GetLastError; returned as it is.
bool Told(bool isDone, Trace what, const Path& path, std::uint64_t bytes = 0);

// It stays.
void TellStayed(const Path& path, Why why, std::uint32_t systemError = 0);

// By a name in the ANSI code page, or the program's own word for it.
void TellStayed(const char* name, Why why, std::uint32_t systemError = 0);

// What went is as many as there are fewer; what is left stays by one name.
void TellDifference(Trace what, int before, int after, const char* name);

}  // namespace platform
