#include "platform/file_itself.h"

#include "platform/system_functions.h"

namespace platform {

namespace {

constexpr ULONG kDispositionInformation = 13;

UniqueFile OpenUnfollowed(const Path& path, DWORD access, DWORD share) {
  if (!UsesWideNames()) return NativeOpen(path, access, share);
  return UniqueFile(late::CreateFileWide(path.Native().c_str(), access, share, nullptr, OPEN_EXISTING,
                                         FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

// Not every disk keeps to the demand not to follow. What the folders on the way are is not asked here; where they are links
// the final path of the folder has to begin the one of the file.
bool IsWhereItIsAskedFor(HANDLE file, const Path& path) {
  const Path final = FinalPathOf(file);
  return final.IsEmpty() || EqualIgnoringCase(final.Native(), path.Native()) ||
         EqualIgnoringCase(final.Native(), (NativeFinalPath(path.Parent()) / path.Name()).Native());
}

}  // namespace

FileItself OpenItself(const Path& path, DWORD access, DWORD share) {
  FileItself opened;
  opened.file = OpenUnfollowed(path, access, share);
  if (!opened.file) return opened;
  BY_HANDLE_FILE_INFORMATION found;
  const bool isFile = ::GetFileInformationByHandle(opened.file.get(), &found) &&
                      (found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0;
  if (!isFile || !IsWhereItIsAskedFor(opened.file.get(), path)) {
    opened.file.reset();
    ::SetLastError(ERROR_ACCESS_DENIED);
    return opened;
  }
  opened.attributes = found.dwFileAttributes;
  opened.names = found.nNumberOfLinks;
  opened.identity = {found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow};
  return opened;
}

bool CanDeleteByHandle() {
  static const bool can = late::NtSetInformationFile && late::RtlNtStatusToDosError;
  return can && UsesWideNames();
}

bool DeleteByHandle(HANDLE file) {
  if (!CanDeleteByHandle()) {
    ::SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return false;
  }
  BOOLEAN goes = TRUE;
  IO_STATUS_BLOCK io;
  const LONG status = late::NtSetInformationFile(file, &io, &goes, sizeof goes, kDispositionInformation);
  if (status < 0) ::SetLastError(late::RtlNtStatusToDosError(status));
  return status >= 0;
}

}  // namespace platform
