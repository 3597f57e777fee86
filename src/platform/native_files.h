// Files and folders by their paths.
//
// On the NT family the wide functions are asked, by "\\?\" paths: names outside the ANSI code page, names with blanks at
// their ends and paths beyond 259 characters are all reached. On Windows 9x, whose wide functions are stubs, the same path
// crosses to the ANSI functions here, and a name that the code page cannot hold is listed by its short name, if it has one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/handles.h"
#include "platform/path.h"
#include "platform/wide_system.h"
#include "platform/win32.h"

namespace platform {

// The path of a text as users and other programs write it, relative ones against the current folder; empty for a text that
// leads nowhere.
Path PathOf(WideView text);

// The path in its short names as far as the disk has any; empty for what does not exist.
Path ShortForm(const Path& path);

// What a function of the system answers that fills a buffer and returns the length: the one that it had too little room for,
// or as much as there was. `about` is handed through. Empty for one that fails.
WideText SystemText(DWORD (*wide)(wchar_t* text, DWORD size, const void* about),
                    DWORD (*ansi)(char* text, DWORD size, const void* about), const void* about = nullptr);

// What the ANSI functions are asked with; an empty text, which leads nowhere, for a path that the code page cannot hold.
std::string AnsiForm(const Path& path);

// Throws the run-time error for the reason that the system's last failing call gave (GetLastError).
[[noreturn]] void RaiseLastError();

// Writes the bytes at the file's position. Raises the system's reason, kDiskFull where fewer bytes than asked for got there.
void WriteOrRaise(HANDLE file, const void* bytes, std::size_t count);

// GetFileAttributes; INVALID_FILE_ATTRIBUTES when there is no such entry.
DWORD NativeAttributes(const Path& path);

bool IsFolder(DWORD attributes);  // an existing folder or a link to one
bool IsLink(DWORD attributes);    // a reparse point: junction, symbolic link, mount point
bool IsFolderAndNoLink(DWORD attributes);

// False on failure, with the reason in GetLastError.
bool NativeDeleteFile(const Path& path);
bool NativeRemoveFolder(const Path& path);  // an empty folder, or a link to a folder (the link goes, not its target)
bool NativeMakeFolder(const Path& path);
bool NativeSetAttributes(const Path& path, DWORD attributes);

// An existing file, not truncated, at its first byte. `access` and `share` are those of CreateFile; the second form lets
// nobody else in, the third makes the file, in the place of one that may be there. None on failure, with the reason in
// GetLastError.
UniqueFile NativeOpen(const Path& path, DWORD access, DWORD share);
UniqueFile NativeOpenForWriting(const Path& path);
UniqueFile NativeCreate(const Path& path);

struct FolderEntry {
  WideText name;        // what a path has to hold: the short name where the long one leads elsewhere
  WideText listedName;  // as the system lists it
  DWORD attributes = 0;
  std::uint64_t size = 0;  // bytes
  DWORD linkTag = 0;       // what kind of link; 0 when the system does not tell
};

// True for what the system calls another name of something: junctions, mount points, symbolic links. Removing one as a
// folder removes the name alone. False for a reparse point of any other kind, a cloud folder for example, and where no kind
// is told: there the removal may reach the target.
bool IsNamedLink(const FolderEntry& entry);
bool IsNamedLinkAt(const Path& path);  // false for what is no link

// Tells whether two paths lead to one folder. Nothing on Windows 9x, for a missing folder and where folders have no number.
struct FolderIdentity {
  DWORD volume, indexHigh, indexLow;
  friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};
std::optional<FolderIdentity> NativeIdentity(const Path& folder);
std::optional<FolderIdentity> IdentityOf(HANDLE opened);

// The folder's path with every link on the way followed; empty for a missing one and on systems before Windows Vista. The
// same of what is open.
Path NativeFinalPath(const Path& folder);
Path FinalPathOf(HANDLE opened);

// What a path has to hold for an entry that a listing names: its name, or its short name where the name leads elsewhere or
// is too long; empty when neither leads to it. The two entries of every folder keep their names.
WideView UsableName(WideView name, WideView shortName, bool tooLong = false);

// One folder's entries, or those that a mask picks, in the system's order, hidden ones included, "." and ".." as well. An
// entry that no path leads to is left out: it has a name that means something else in a path, and no short name.
class FolderListing {
 public:
  explicit FolderListing(const Path& folder, WideView mask = Wide<"*">());

  // False when there is no further entry (GetLastError gives ERROR_NO_MORE_FILES, or ERROR_FILE_NOT_FOUND for a root without
  // any) or the folder cannot be listed (another reason); `entry` is then unchanged.
  bool Next(FolderEntry& entry);

 private:
  bool Read();
  WideView Usable() const;

  WideText pattern_;        // empty for an empty path, and once the listing has begun
  std::size_t length_ = 0;  // of the pattern
  UniqueFind find_;
  WIN32_FIND_DATAW data_ = {};
  bool started_ = false;
};

}  // namespace platform
