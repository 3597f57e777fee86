#include "platform/whole_file.h"

#include "platform/handles.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

UniqueFile Open(const std::string& path, DWORD access, DWORD share, DWORD disposition) {
  UniqueFile file(::CreateFileA(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) RaiseLastError();
  return file;
}

std::uint64_t Whole(DWORD high, DWORD low) { return (static_cast<std::uint64_t>(high) << 32) | low; }

std::uint64_t LengthOfOpenFile(HANDLE file) {
  DWORD high = 0;
  ::SetLastError(ERROR_SUCCESS);
  const DWORD low = ::GetFileSize(file, &high);
  if (low == INVALID_FILE_SIZE && ::GetLastError() != ERROR_SUCCESS) RaiseLastError();
  return Whole(high, low);
}

void WriteNewFile(const std::string& path, const std::string& bytes) {
  const UniqueFile file = Open(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
  WriteOrRaise(file.get(), bytes.data(), bytes.size());
  if (!::FlushFileBuffers(file.get())) RaiseLastError();
}

// False where the system cannot: Windows 9x has a stub of MoveFileEx.
bool ReplaceInOneStep(const std::string& from, const std::string& to) {
  if (ReplaceInTwoSteps || !late::MoveFileEx) return false;
  if (late::MoveFileEx(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return true;
  if (::GetLastError() != ERROR_CALL_NOT_IMPLEMENTED) RaiseLastError();
  return false;
}

// The old file steps aside until the new one has its name.
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

void PutInPlace(const std::string& from, const std::string& to) {
  const DWORD attributes = ::GetFileAttributesA(to.c_str());
  const bool there = attributes != INVALID_FILE_ATTRIBUTES;
  if (there && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) Raise(kAccessError);
  if (!ReplaceInOneStep(from, to)) ReplaceStepByStep(from, to);
}

}  // namespace

std::uint64_t FileLen(const std::string& path) {
  if (!late::GetFileAttributesEx)
    return LengthOfOpenFile(Open(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING).get());
  WIN32_FILE_ATTRIBUTE_DATA found;
  if (!late::GetFileAttributesEx(path.c_str(), GetFileExInfoStandard, &found)) RaiseLastError();
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) Raise(kFileNotFound);
  return Whole(found.nFileSizeHigh, found.nFileSizeLow);
}

std::string ReadWholeFile(const std::string& path) {
  const UniqueFile file = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  const std::uint64_t length = LengthOfOpenFile(file.get());
  if (length > 0x7FFFFFFFu) Raise(kOutOfMemory);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  DWORD read = 0;
  if (!::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) RaiseLastError();
  bytes.resize(read);
  return bytes;
}

void ReplaceWholeFile(const std::string& path, const std::string& bytes) {
  const std::string beside = path + ".tmp";
  try {
    WriteNewFile(beside, bytes);
    PutInPlace(beside, path);
  } catch (const RuntimeError&) {
    ::DeleteFileA(beside.c_str());
    throw;
  }
}

}  // namespace platform
