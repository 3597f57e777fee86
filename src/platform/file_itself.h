// A file as such: opened without being followed where it leads, and judged by its handle.
#pragma once

#include "platform/native_files.h"

namespace platform {

// An existing file, not truncated, at its first byte. None for a link and any other reparse point, for a folder, for a
// read-only file with the access GENERIC_WRITE, and where the file's final path is another one than the folder's with its
// name; the reason is in GetLastError, ERROR_ACCESS_DENIED for what is refused here. On Windows 9x, which has no links, the
// same as NativeOpen.
UniqueFile OpenItself(const Path& path, DWORD access, DWORD share);

// Of what is open; INVALID_FILE_ATTRIBUTES where the system does not tell, with the reason in GetLastError.
DWORD AttributesOf(HANDLE opened);

// Deletes the file of a handle that was opened with the access DELETE when it is closed, whatever its path leads to by then;
// false on failure, with the reason in GetLastError, and on Windows 9x.
bool DeleteByHandle(HANDLE file);
bool CanDeleteByHandle();

}  // namespace platform
