// Small files, read and written as a whole. A failing procedure raises the run-time error of the system's reason.
#pragma once

#include <cstdint>
#include <string>

#include "platform/path.h"

namespace platform {

// The length in bytes; also of a file that another process holds. Raises 53 for a folder.
std::uint64_t FileLen(const Path& path);

// Shared with everybody while it is read. Raises 70 when another process allows no reading.
std::string ReadWholeFile(const Path& path);

// Creates or replaces the file. The bytes first go to a file "<path>.tmp" beside it and to the disk, so that the old file
// stays whole when the writing fails; no part of the new one is left over.
void ReplaceWholeFile(const Path& path, const std::string& bytes);

}  // namespace platform
