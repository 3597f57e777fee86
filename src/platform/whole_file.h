// Small files, read and written as a whole. A failing procedure raises the run-time error of the system's reason.
#pragma once

#include <cstdint>
#include <string>

#include "platform/path.h"

namespace platform {

// Bytes. No list is as long; what is was damaged, or planted to fill the memory.
constexpr std::uint64_t kLongestWholeFile = std::uint64_t{16} << 20;
bool IsTooLarge(const Path& path);

// The length in bytes; also of a file that another process holds. Raises 53 for a folder.
std::uint64_t FileLen(const Path& path);

// Shared with everybody while it is read. Raises 70 when another process allows no reading, 7 for one that is
// too large.
std::string ReadWholeFile(const Path& path);

// Creates or replaces the file. The bytes first go to a file "<path>.tmp" beside it and to the disk, which then takes its
// place: in one step on the NT family, while on Windows 9x the old file steps aside to "<path>.old". The old file is
// overwritten before it goes, where the file system lets it have a second name until then. When one of these steps fails the
// old file stays whole, and nothing is left over.
void ReplaceWholeFile(const Path& path, const std::string& bytes);

// Overwrites the file over its whole length and deletes it. One that has a second name, or is a link, is deleted only.
// False, with the reason as the last error, when something of that name is still there.
bool WipeWholeFile(const Path& path);

// After a save that was broken off at any moment: the file is there again, the old or the new one, and nothing is beside it.
void MendWholeFile(const Path& path);

}  // namespace platform
