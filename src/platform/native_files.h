// Files and folders by the longest names the system has.
//
// On the NT family a NativePath is a wide "\\?\" path: names outside the ANSI code page, names with blanks at their ends
// and paths beyond 259 characters are all reached. On Windows 9x, whose wide functions are stubs, the same path crosses
// to the ANSI functions, and a name that the code page cannot hold is listed by its short name, if it has one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/handles.h"
#include "platform/win32.h"

namespace platform {

// Set: the ANSI functions also where the wide ones work. A NativePath of the one way is of no use to the other.
inline bool AnsiNamesOnly = false;

bool UsesWideNames();

using NativePath = std::wstring;

// The full path of an ANSI path (relative ones against the current folder); empty when the system cannot form it or leaves
// a name of dots alone in it.
NativePath ToNativePath(const std::string& path);

// The same for a full path that a wide function has given.
NativePath ToNativePath(const std::wstring& fullPath);

// The path as the user knows it, in ANSI, without the "\\?\"; characters outside the code page become "?".
std::string ShownPath(const NativePath& path);

// The ANSI path that leads to the entry and to no other one: as it is shown, or its short form where characters stand
// outside the code page or the name ends in a way that the ANSI functions cut off. An entry without either has a path with
// "?" in it, which leads nowhere, or none (empty).
std::string AnsiPath(const NativePath& path);

// Throws the run-time error for the reason that the system's last failing call gave (GetLastError).
[[noreturn]] void RaiseLastError();

// Writes the bytes where the file stands. Raises the system's reason, kDiskFull where fewer bytes than asked for got there.
void WriteOrRaise(HANDLE file, const void* bytes, std::size_t count);

// GetFileAttributes; INVALID_FILE_ATTRIBUTES when there is no such entry.
DWORD NativeAttributes(const NativePath& path);

bool IsFolder(DWORD attributes);  // an existing folder or a link to one
bool IsLink(DWORD attributes);    // a reparse point: junction, symbolic link, mount point
bool IsFolderAndNoLink(DWORD attributes);

// False on failure, with the reason in GetLastError.
bool NativeDeleteFile(const NativePath& path);
bool NativeRemoveFolder(const NativePath& path);  // an empty folder, or a link to a folder (the link goes, not its target)
bool NativeSetAttributes(const NativePath& path, DWORD attributes);

// An existing file, not truncated, at its first byte. `access` and `share` are those of CreateFile; the second form lets
// nobody else in. None on failure, with the reason in GetLastError.
UniqueFile NativeOpen(const NativePath& path, DWORD access, DWORD share);
UniqueFile NativeOpenForWriting(const NativePath& path);

// The length in bytes; 0 for a file that cannot be opened for writing.
std::uint64_t NativeFileLength(const NativePath& path);

struct FolderEntry {
  std::wstring name;        // what a path has to hold: the short name where the long one leads elsewhere
  std::wstring listedName;  // as the system lists it
  DWORD attributes = 0;
  std::uint64_t size = 0;  // bytes
  DWORD linkTag = 0;       // what kind of link; 0 when the system does not tell
};

// True for what the system calls another name of something: junctions, mount points, symbolic links. Removing one as a
// folder removes the name alone. False for a reparse point of any other kind, a cloud folder say, and where no kind is
// told: there the removal may reach the target.
bool IsNamedLink(const FolderEntry& entry);

// Tells whether two paths lead to one folder. Nothing on Windows 9x, for a missing folder and where folders have no number.
struct FolderIdentity {
  DWORD volume, indexHigh, indexLow;
  friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};
std::optional<FolderIdentity> NativeIdentity(const NativePath& folder);

// The folder's path with every link on the way followed; empty for a missing one and on systems before Windows Vista.
NativePath NativeFinalPath(const NativePath& folder);

// One folder's entries in the system's order, hidden ones included, "." and ".." as well. An entry that no path leads to
// is left out: it has a name that means something else in a path, and no short name.
class FolderListing {
 public:
  explicit FolderListing(const NativePath& folderWithBackslash);

  // False when there is no further entry (GetLastError gives ERROR_NO_MORE_FILES, or ERROR_FILE_NOT_FOUND for a root without
  // any) or the folder cannot be listed (another reason); `entry` is then unchanged.
  bool Next(FolderEntry& entry);

 private:
  bool Read();
  const wchar_t* UsableName() const;  // null when it has none

  NativePath pattern_;
  UniqueFind find_;
  WIN32_FIND_DATAW data_ = {};
  bool started_ = false;
};

}  // namespace platform
