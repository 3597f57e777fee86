// Deleting one file, after as many overwrite passes as asked for.
#pragma once

#include <cstdint>

#include "platform/open_folder.h"
#include "platform/runtime_error.h"

namespace cleaners {
using namespace platform;

// True for an existing file, false for a folder. The scripting file-system object gives the same answer; asking it costs
// a COM object a file.
bool FileExistsFs(const Path& path);

// Deletes the file, overwritten `passes` times; nothing for a missing file. A failure goes to the cleaners' log hook.
void WipeFile(const Path& path, std::int16_t passes);

// What both do with the file: overwrites it `passes` times over `length` bytes and deletes it, unless the stop request comes
// meanwhile. Gives what failed, if anything did. `in` is the folder that it lies in; none for a file that is reached by its
// path alone.
[[nodiscard]] RuntimeError Wipe(const OpenFolder& in, const Path& path, std::uint64_t length, std::int16_t passes);

// The same for a path that may lead to no file: then nothing is done. The file is asked for its length;
// one that does not tell it stays, since nobody knows how much to overwrite.
[[nodiscard]] RuntimeError WipeIfThere(const OpenFolder& in, const Path& path, std::int16_t passes);

// What WipeFile does, for a file that the listing of `in` has just named: `length` is its size in bytes.
void WipeListedFile(const OpenFolder& in, const Path& path, std::uint64_t length, std::int16_t passes);

// WipeFile on every name that a listing of `mask` returns, hidden files included, until the stop request. The bare name is
// used as the listing returns it, so a file is found only relative to the current folder: a
// mask of another folder takes nothing there.
void WipeMatchingFiles(WideView mask);

}  // namespace cleaners
