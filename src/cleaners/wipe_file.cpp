#include "cleaners/wipe_file.h"

#include <cstdlib>

#include "cleaners/clean_log.h"
#include "cleaners/mask_ending.h"
#include "cleaners/wipe_fill.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/system_error.h"

namespace cleaners {
using namespace platform;

namespace {

char RandomFillCharacter() {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  std::srand(::GetTickCount());
  FILETIME ticks;
  ::SystemTimeToFileTime(&now, &ticks);
  const double days =
      (static_cast<double>(ticks.dwHighDateTime) * 4294967296.0 + ticks.dwLowDateTime) / (10000000.0 * 86400.0);
  const double seconds = now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
  return FillCharacter(days, seconds, std::rand() / (static_cast<double>(RAND_MAX) + 1.0));
}

void Put(HANDLE file, const char* bytes, std::size_t count) {
  DWORD written = 0;
  if (!::WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr)) RaiseSystemError(::GetLastError());
}

// One pass. False when no further pass is wanted: the file cannot be opened, or a stop was asked for.
bool Overwrite(const NativePath& path, std::uint64_t length) {
  const FillBlocks blocks = MakeFillBlocks(RandomFillCharacter(), RandomFillCharacter());
  Err.Clear();
  const UniqueFile file = NativeOpenForWriting(path);
  if (!file) {
    Err.Set({RuntimeErrorNumberOf(::GetLastError()), RuntimeErrorDescription(RuntimeErrorNumberOf(::GetLastError()))});
    return false;
  }
  const std::uint64_t kilobytes = length / 1024;
  for (std::uint64_t round = 1; round <= kilobytes; ++round) {
    resumeNext([&] { Put(file.get(), round % 2 == 1 ? blocks.a.data() : blocks.b.data(), blocks.a.size()); });
    DoEventsNowAndThen();
  }
  const std::size_t rest = static_cast<std::size_t>(length % 1024);
  if (rest > 0) resumeNext([&] { Put(file.get(), blocks.a.data(), rest); });
  if (StopErase) return false;
  Err.Clear();
  return true;
}

}  // namespace

bool OverwriteAndDelete(const NativePath& path, std::uint64_t length, std::int16_t passes) {
  Err.Clear();
  for (std::int16_t pass = 0; pass < passes; ++pass)
    if (!Overwrite(path, length)) break;
  if (Err.Number() == 0 && !StopErase) {
    resumeNext([&] {
      if (!NativeDeleteFile(path)) RaiseSystemError(::GetLastError());
    });
  }
  return Err.Number() == 0;
}

bool OverwriteAndDeleteIfThere(const NativePath& path, std::int16_t passes) {
  return !FileExistsFs(path) || OverwriteAndDelete(path, passes > 0 ? NativeFileLength(path) : 0, passes);
}

bool FileExistsFs(const NativePath& path) {
  const DWORD attributes = NativeAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !IsFolder(attributes);
}

void WipeFile(const std::string& path, std::int16_t passes) {
  if (!OverwriteAndDeleteIfThere(ToNativePath(path), passes)) LogCleanResult(path, Err.Description());
  Err.Clear();
}

void WipeListedFile(const NativePath& path, std::uint64_t length, std::int16_t passes) {
  if (!OverwriteAndDelete(path, length, passes)) LogCleanResult(ShownPath(path), Err.Description());
  Err.Clear();
}

void WipeMatchingFiles(const std::string& mask) {
  WIN32_FIND_DATAA found;
  const UniqueFind find(::FindFirstFileA(mask.c_str(), &found));
  for (bool more = static_cast<bool>(find); more && !StopErase; more = ::FindNextFileA(find.get(), &found) != 0) {
    const bool folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!folder && IsMeantByMask(found.cFileName, mask)) WipeFile(found.cFileName, WipePasses);
    DoEventsNowAndThen();
  }
}

}  // namespace cleaners
