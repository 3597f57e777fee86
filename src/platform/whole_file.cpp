#include "platform/whole_file.h"

#include <algorithm>
#include <cstddef>

#include "platform/handles.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

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

// The name with something after it. Empty for a root, which is no file's path.
Path Beside(const Path& path, WideView ending) { return path.Parent() / WideText(path.Name()).append(ending); }

Path Unfinished(const Path& path) { return Beside(path, Wide<".tmp">()); }

// Where the old file is while it is being replaced. Only Windows 9x, which has no other way, ever has it there alone.
Path Aside(const Path& path) { return UsesWideNames() ? Beside(path, Wide<".old.tmp">()) : Beside(path, Wide<".old">()); }

// What has another name as well belongs to whoever gave it that one.
bool IsAlone(HANDLE file, std::uint64_t& length) {
  BY_HANDLE_FILE_INFORMATION facts;
  if (!::GetFileInformationByHandle(file, &facts)) return false;
  length = Whole(facts.nFileSizeHigh, facts.nFileSizeLow);
  return facts.nNumberOfLinks == 1 && (facts.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

// Over its whole length, in its place, and as far as the disk.
void Overwrite(const Path& path) {
  if (IsLink(NativeAttributes(path))) return;
  const UniqueFile file = NativeOpenForWriting(path);
  std::uint64_t left = 0;
  if (!file || !IsAlone(file.get(), left)) return;
  const std::string zeros(static_cast<std::size_t>(std::min<std::uint64_t>(left, 0x10000)), '\0');
  for (; left > 0; left -= std::min<std::uint64_t>(left, zeros.size()))
    WriteOrRaise(file.get(), zeros.data(), static_cast<std::size_t>(std::min<std::uint64_t>(left, zeros.size())));
  ::FlushFileBuffers(file.get());
}

bool MoveNarrow(const Path& from, const Path& to) { return ::MoveFileA(AnsiForm(from).c_str(), AnsiForm(to).c_str()) != 0; }

// Windows 9x cannot do it in one step: there the old file steps aside until the new one has its name.
void ReplaceStepByStep(const Path& from, const Path& to) {
  if (!MoveNarrow(to, Aside(to)) && ::GetLastError() != ERROR_FILE_NOT_FOUND) RaiseLastError();
  if (MoveNarrow(from, to)) return;
  const DWORD reason = ::GetLastError();
  MoveNarrow(Aside(to), to);
  RaiseSystemError(reason);
}

// A second name for the old file, where the file system gives one: replaced in one step, its bytes would stay on the disk
// where nobody can overwrite them any more. One that somebody holds open would keep that name.
void KeepToWipe(const Path& to) {
  if (!NativeOpen(to, DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)) RaiseLastError();
  if (late::CreateHardLinkWide) late::CreateHardLinkWide(Aside(to).Native().c_str(), to.Native().c_str(), nullptr);
}

void ReplaceInOneStep(const Path& from, const Path& to) {
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (late::MoveFileExWide(from.Native().c_str(), to.Native().c_str(), kHow)) return;
  const DWORD reason = ::GetLastError();
  NativeDeleteFile(Aside(to));
  RaiseSystemError(reason);
}

void PutInPlace(const Path& from, const Path& to) {
  const DWORD attributes = NativeAttributes(to);
  const bool there = attributes != INVALID_FILE_ATTRIBUTES;
  if (there && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) Raise(kAccessError);
  WipeWholeFile(Aside(to));
  if (UsesWideNames()) {
    if (there) KeepToWipe(to);
    ReplaceInOneStep(from, to);
  } else {
    ReplaceStepByStep(from, to);
  }
  WipeWholeFile(Aside(to));
}

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
  if (length > kLongestWholeFile) Raise(kOutOfMemory);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  DWORD read = 0;
  if (!::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) RaiseLastError();
  bytes.resize(read);
  return bytes;
}

void ReplaceWholeFile(const Path& path, const std::string& bytes) {
  const Path beside = Unfinished(path);
  WipeWholeFile(beside);  // of a save that was broken; whatever else has that name is not written into
  try {
    WriteNewFile(beside, bytes);
    PutInPlace(beside, path);
  } catch (const RuntimeError&) {
    WipeWholeFile(beside);
    throw;
  }
}

bool WipeWholeFile(const Path& path) {
  const DWORD attributes = NativeAttributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) return true;
  if (!IsFolder(attributes)) quietly([&] { Overwrite(path); });
  return NativeDeleteFile(path);
}

void MendWholeFile(const Path& path) {
  if (path.IsEmpty() || path.IsRoot()) return;
  if (!UsesWideNames() && NativeAttributes(path) == INVALID_FILE_ATTRIBUTES) MoveNarrow(Aside(path), path);
  WipeWholeFile(Aside(path));
  WipeWholeFile(Unfinished(path));
}

bool IsTooLarge(const Path& path) {
  return valueOr(false, [&] { return FileLen(path) > kLongestWholeFile; });
}

}  // namespace platform
