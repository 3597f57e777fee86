#include "platform/whole_file.h"

#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

std::uint64_t Whole(DWORD high, DWORD low) { return (static_cast<std::uint64_t>(high) << 32) | low; }

std::uint64_t LengthOfOpenFile(HANDLE file) {
  DWORD high = 0;
  ::SetLastError(ERROR_SUCCESS);
  const DWORD low = ::GetFileSize(file, &high);
  if (low == INVALID_FILE_SIZE && ::GetLastError() != ERROR_SUCCESS) RaiseLastError();
  return Whole(high, low);
}

void WriteNewFile(const Path& path, const std::string& bytes) {
  const UniqueFile file = NativeCreate(path);
  if (!file) RaiseLastError();
  WriteOrRaise(file.get(), bytes.data(), bytes.size());
  if (!::FlushFileBuffers(file.get())) RaiseLastError();
}

// Windows 9x cannot do it in one step: there the old file steps aside until the new one has its name.
void ReplaceStepByStep(const std::string& from, const std::string& to) {
  const std::string aside = to + ".old";
  ::DeleteFileA(aside.c_str());
  if (!::MoveFileA(to.c_str(), aside.c_str()) && ::GetLastError() != ERROR_FILE_NOT_FOUND) RaiseLastError();
  if (!::MoveFileA(from.c_str(), to.c_str())) {
    const DWORD reason = ::GetLastError();
    ::MoveFileA(aside.c_str(), to.c_str());
    RaiseSystemError(reason);
  }
  ::DeleteFileA(aside.c_str());
}

void PutInPlace(const Path& from, const Path& to) {
  const DWORD attributes = NativeAttributes(to);
  const bool there = attributes != INVALID_FILE_ATTRIBUTES;
  if (there && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) Raise(kAccessError);
  if (!UsesWideNames()) return ReplaceStepByStep(AnsiForm(from), AnsiForm(to));
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (!late::MoveFileExWide(from.Native().c_str(), to.Native().c_str(), kHow)) RaiseLastError();
}

// The name with something after it. Empty for a root, which is no file's path.
Path Beside(const Path& path, WideView ending) { return path.Parent() / WideText(path.Name()).append(ending); }

}  // namespace

std::uint64_t FileLen(const Path& path) {
  if (!UsesWideNames()) {
    WIN32_FIND_DATAA found;
    const UniqueFind find(::FindFirstFileA(AnsiForm(path).c_str(), &found));
    if (!find) RaiseLastError();
    if (IsFolder(found.dwFileAttributes)) Raise(kFileNotFound);
    return Whole(found.nFileSizeHigh, found.nFileSizeLow);
  }
  WIN32_FILE_ATTRIBUTE_DATA found;
  if (!late::GetFileAttributesExWide(path.Native().c_str(), GetFileExInfoStandard, &found)) RaiseLastError();
  if (IsFolder(found.dwFileAttributes)) Raise(kFileNotFound);
  return Whole(found.nFileSizeHigh, found.nFileSizeLow);
}

std::string ReadWholeFile(const Path& path) {
  const UniqueFile file = NativeOpen(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
  if (!file) RaiseLastError();
  const std::uint64_t length = LengthOfOpenFile(file.get());
  if (length > 0x7FFFFFFFu) Raise(kOutOfMemory);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  DWORD read = 0;
  if (!::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) RaiseLastError();
  bytes.resize(read);
  return bytes;
}

void ReplaceWholeFile(const Path& path, const std::string& bytes) {
  const Path beside = Beside(path, Wide<".tmp">());
  try {
    WriteNewFile(beside, bytes);
    PutInPlace(beside, path);
  } catch (const RuntimeError&) {
    NativeDeleteFile(beside);
    throw;
  }
}

}  // namespace platform
