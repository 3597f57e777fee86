// Small files, read and written as a whole. Paths are ANSI. A failing procedure raises the run-time error of the system's
// reason.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// Set: the way of Windows 9x, in two steps, also where the system puts a file in another's place in one.
inline bool ReplaceInTwoSteps = false;

// The length in bytes; also of a file that another process holds. Raises 53 for a folder.
std::uint64_t FileLen(const std::string& path);

// Shared with everybody while it is read. Raises 70 when another process allows no reading.
std::string ReadWholeFile(const std::string& path);

// Creates or replaces the file. The bytes first go to a file "<path>.tmp" beside it and to the disk, so that the old file
// stays whole when the writing fails; that leaves nothing behind.
void ReplaceWholeFile(const std::string& path, const std::string& bytes);

}  // namespace platform
