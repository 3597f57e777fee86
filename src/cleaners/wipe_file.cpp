#include "cleaners/wipe_file.h"

#include <cstdlib>
#include <string>

#include "cleaners/clean_log.h"
#include "cleaners/locked_files.h"
#include "cleaners/mask_ending.h"
#include "cleaners/wipe_fill.h"
#include "cleaners/wipe_state.h"
#include "platform/handles.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/whole_file.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

// Of the generator's next number.
char NextFillCharacter() {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  FILETIME ticks;
  ::SystemTimeToFileTime(&now, &ticks);
  const double days =
      (static_cast<double>(ticks.dwHighDateTime) * 4294967296.0 + ticks.dwLowDateTime) / (10000000.0 * 86400.0);
  const double seconds = now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
  return FillCharacter(days, seconds, std::rand() / (static_cast<double>(RAND_MAX) + 1.0));
}

// What a pass may end with: whether there is to be another one, and why the file could not be opened, if it could not.
struct PassOutcome {
  bool goOn = false;
  RuntimeError failure;
};

PassOutcome Overwrite(const OpenFolder& in, const Path& path, std::uint64_t length) {
  std::srand(::GetTickCount());  // once for both: a second time in the same tick would make the second like the first
  const char a = NextFillCharacter();
  const FillBlocks blocks = MakeFillBlocks(a, NextFillCharacter());
  UniqueFile file;
  const RuntimeError failure = failureOf([&] {
    const bool opened = TryWhileLocked([&] {
      file = in.Open(path, GENERIC_WRITE, 0);
      return static_cast<bool>(file);
    });
    if (opened) return;
    Told(false, Trace::File, path);
    RaiseLastError();
  });
  if (failure) return {false, failure};
  const std::uint64_t kilobytes = length / 1024;
  for (std::uint64_t round = 1; round <= kilobytes; ++round) {
    const std::string& block = round % 2 == 1 ? blocks.a : blocks.b;
    quietly([&] { WriteOrRaise(file.get(), block.data(), block.size()); });
    DoEventsNowAndThen();
  }
  const std::size_t rest = static_cast<std::size_t>(length % 1024);
  if (rest > 0) quietly([&] { WriteOrRaise(file.get(), blocks.a.data(), rest); });
  // The bytes of each pass reach the disk, and before the deletion: otherwise the next one would take their place.
  ::FlushFileBuffers(file.get());
  return {!StopErase, {}};
}

}  // namespace

RuntimeError Wipe(const OpenFolder& in, const Path& path, std::uint64_t length, std::int16_t passes) {
  PassOutcome outcome{true, {}};
  for (std::int16_t pass = 0; pass < passes && outcome.goOn; ++pass) outcome = Overwrite(in, path, length);
  if (outcome.failure || StopErase) return outcome.failure;
  return failureOf([&] {
    if (!Told(TryWhileLocked([&] { return in.Delete(path); }), Trace::File, path, length)) RaiseLastError();
  });
}

RuntimeError WipeIfThere(const OpenFolder& in, const Path& path, std::int16_t passes) {
  if (!FileExistsFs(path)) return {};
  std::uint64_t length = 0;
  const RuntimeError failure = failureOf([&] { length = FileLen(path); });
  return failure && passes > 0 ? failure : Wipe(in, path, length, passes);
}

bool FileExistsFs(const Path& path) {
  const DWORD attributes = NativeAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !IsFolder(attributes);
}

void WipeFile(const Path& path, std::int16_t passes) {
  if (const RuntimeError failure = WipeIfThere(OpenFolder(), path, passes))
    LogCleanResult(path.Shown(), Widen(failure.description));
}

void WipeListedFile(const OpenFolder& in, const Path& path, std::uint64_t length, std::int16_t passes) {
  if (const RuntimeError failure = Wipe(in, path, length, passes)) LogCleanResult(path.Shown(), Widen(failure.description));
}

namespace {

// By its bare name, which leads to the file where the listed folder is the current one.
void WipeNamed(WideView listedFolder, const FolderEntry& entry) {
  const Path path = PathOf(Wide<".">()) / entry.name;
  if (FileExistsFs(path))
    WipeFile(path, WipePasses);
  else if (const Path listed = PathOf(WideText(listedFolder).append(entry.name)); FileExistsFs(listed))
    TellStayed(listed, Why::NotFromHere);
}

}  // namespace

void WipeMatchingFiles(WideView mask) {
  const std::size_t name = mask.rfind(L'\\') + 1;
  FolderListing listing(PathOf(name == 0 ? Wide<".">() : mask.substr(0, name)), mask.substr(name));
  for (FolderEntry entry; !StopErase && listing.Next(entry);) {
    if (!IsFolder(entry.attributes) && IsMeantByMask(entry.listedName, mask)) WipeNamed(mask.substr(0, name), entry);
    DoEventsNowAndThen();
  }
}

}  // namespace cleaners
