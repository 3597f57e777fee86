#include "shred/modShred.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/ErroHandle.h"
#include "platform/handles.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/wide_system.h"
#include "shred/block_writer.h"
#include "shred/overwrite_sequence.h"

namespace shred {
using namespace platform;

namespace {

constexpr char kSourceTag[] = "modShred,DeleteFileShred";

// What fails in DeleteFileShred is reported, and the next statement runs.
class Failures {
 public:
  void Tell(const RuntimeError& failure) {
    if (!failure) return;
    if (!first_) first_ = failure;
    ReportError(kSourceTag, failure);
  }
  void Try(Statement statement) { Tell(failureOf(statement)); }
  const RuntimeError& First() const { return first_; }

 private:
  RuntimeError first_;
};

// What is read-only or leads elsewhere is refused here and not left to the system: some file systems and some users are let
// in, and a link's target is not what is deleted afterwards.
UniqueFile OpenForOverwriting(const Path& path) {
  if (path.IsEmpty()) Raise(kBadFileName);  // of a device for example
  const DWORD attributes = NativeAttributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) RaiseLastError();
  if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_REPARSE_POINT)) != 0) Raise(kPermissionDenied);
  // Shared: what others only look at can be overwritten all the same.
  UniqueFile file = NativeOpen(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
  if (!file) RaiseLastError();
  return file;
}

void PutAt(HANDLE file, std::uint32_t offset, std::string_view bytes) {
  if (file == INVALID_HANDLE_VALUE) Raise(kBadFileName);
  ::SetFilePointer(file, static_cast<LONG>(offset), nullptr, FILE_BEGIN);
  WriteOrRaise(file, bytes.data(), bytes.size());
}

// Put together once for all files in a row that have the same level: it takes as long as opening a file.
const std::vector<Block>& BlocksOf(std::int16_t repeatCount) {
  static std::vector<Block> blocks;
  static std::int16_t ofCount = 0;
  if (blocks.empty() || ofCount != repeatCount) {
    std::vector<ItemRun> items;
    for (const OverwriteRun& run : OverwriteSequence(repeatCount))
      if (run.count > 0) items.push_back({run.item, static_cast<std::size_t>(run.count)});
    blocks = InBlocks(items);
    ofCount = repeatCount;
  }
  return blocks;
}

void WriteSequence(HANDLE file, std::int16_t repeatCount, Failures& failures) {
  BlockWriter writer([file](std::uint32_t offset, std::string_view bytes) { PutAt(file, offset, bytes); },
                     [&failures](const RuntimeError& reason) { failures.Tell(reason); });
  for (const Block& block : BlocksOf(repeatCount)) writer.Write(block);
}

// Setting them takes as long as all the rest, so only where there is something to clear.
void TakeAttributesAway(const Path& path) {
  constexpr DWORD kInTheWay = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  if ((NativeAttributes(path) & kInTheWay) != 0) NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL);
}

// The bytes reach the disk first: a deletion that overtakes them would leave the old ones there.
void Close(UniqueFile& file) {
  const bool flushed = !file || ::FlushFileBuffers(file.get());
  const DWORD reason = ::GetLastError();
  file.reset();
  if (!flushed) RaiseSystemError(reason);
}

bool MayBeOnAnotherMedium(const Path& path) {
  const std::string drive = Narrow(DrivePart(path.Shown()));
  if (drive.empty()) return false;  // a share
  const UINT type = ::GetDriveTypeA((drive + "\\").c_str());
  return type == DRIVE_REMOVABLE || type == DRIVE_CDROM;
}

}  // namespace

Presence PresenceOf(const Path& path) {
  if (NativeAttributes(path) != INVALID_FILE_ATTRIBUTES) return Presence::There;
  const bool missing = ::GetLastError() == ERROR_FILE_NOT_FOUND;
  return missing && !MayBeOnAnotherMedium(path) ? Presence::Gone : Presence::OutOfReach;
}

bool Validate(const Path& path) {
  return static_cast<bool>(NativeOpen(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
}

RuntimeError DeleteFileShred(const Path& path, const std::string& levelText) {
  const ReportBurst burst;
  Failures failures;
  std::int16_t repeatCount = 0;
  UniqueFile file;
  failures.Try([&] { repeatCount = RepeatCount(levelText); });
  failures.Try([&] { file = OpenForOverwriting(path); });
  WriteSequence(file.get(), repeatCount, failures);
  failures.Try([&] { Close(file); });
  failures.Try([&] {
    if (!NativeDeleteFile(path)) RaiseLastError();
  });
  return failures.First();
}

RuntimeError ShredFile(const Path& path, const std::string& levelText) {
  RuntimeError failure = failureOf([&] {
    if (!Validate(path)) RaiseLastError();
  });
  if (!failure) {
    TakeAttributesAway(path);
    failure = DeleteFileShred(path, levelText);
  }
  return failure;
}

}  // namespace shred
