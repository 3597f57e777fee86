#include "platform/file_itself.h"

#include "platform/system_functions.h"

namespace platform {

namespace {

constexpr ULONG kBasicInformation = 4, kNameInformation = 9, kDispositionInformation = 13;

// The name that a file has on its volume, "\\x\\y". Empty where the system does not tell, and for a very long one.
WideText NameOnVolume(HANDLE file) {
  struct {
    ULONG bytes;
    wchar_t text[1024];
  } name = {};
  IO_STATUS_BLOCK io;
  if (late::NtQueryInformationFile(file, &io, &name, sizeof name, kNameInformation) < 0) return {};
  return {name.text, name.bytes / sizeof(wchar_t)};
}

// The quick way to tell it: the drive of the path and the file's name are the whole path.
bool IsPlainlyAt(const Path& path, HANDLE file) {
  constexpr std::size_t kDrive = 6;  // "\\?\C:"
  const WideView afterDrive = WideView(path.Native()).substr(kDrive);
  const WideText name = NameOnVolume(file);
  return name == afterDrive || (name.size() == afterDrive.size() && EqualIgnoringCase(name, afterDrive));
}

// Not every disk keeps to the demand not to follow. Where a folder on the way is a link, the final path of the folder that
// the file is in has to begin the one of the file.
bool IsWhereItIsAskedFor(const Path& path, HANDLE file) {
  if (IsPlainlyAt(path, file)) return true;
  const Path final = FinalPathOf(file);
  return final.IsEmpty() || EqualIgnoringCase(final.Native(), (NativeFinalPath(path.Parent()) / path.Name()).Native());
}

// Some file systems and some users are let into a read-only file.
DWORD RefusedAttributes(DWORD access) {
  const DWORD always = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  return (access & GENERIC_WRITE) != 0 ? always | FILE_ATTRIBUTE_READONLY : always;
}

bool IsFileItself(const Path& path, HANDLE file, DWORD access) {
  const DWORD attributes = AttributesOf(file);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & RefusedAttributes(access)) == 0 &&
         IsWhereItIsAskedFor(path, file);
}

}  // namespace

UniqueFile OpenItself(const Path& path, DWORD access, DWORD share) {
  if (!CanDeleteByHandle()) return NativeOpen(path, access, share);
  UniqueFile file(late::CreateFileWide(path.Native().c_str(), access, share, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (file && !IsFileItself(path, file.get(), access)) {
    file.reset();
    ::SetLastError(ERROR_ACCESS_DENIED);
  }
  return file;
}

// Asked for alone where that is possible: all that there is to tell of a file takes as long as opening it.
DWORD AttributesOf(HANDLE opened) {
  if (!CanDeleteByHandle()) {
    BY_HANDLE_FILE_INFORMATION all;
    return ::GetFileInformationByHandle(opened, &all) ? all.dwFileAttributes : INVALID_FILE_ATTRIBUTES;
  }
  FILE_BASIC_INFORMATION found;
  IO_STATUS_BLOCK io;
  const LONG status = late::NtQueryInformationFile(opened, &io, &found, sizeof found, kBasicInformation);
  if (status >= 0) return found.FileAttributes;
  ::SetLastError(late::RtlNtStatusToDosError(status));
  return INVALID_FILE_ATTRIBUTES;
}

bool CanDeleteByHandle() {
  static const bool can = late::NtQueryInformationFile && late::NtSetInformationFile && late::RtlNtStatusToDosError;
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
