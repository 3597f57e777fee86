#include "shred/modShred.h"

#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/system_error.h"
#include "shred/block_writer.h"
#include "shred/overwrite_sequence.h"

namespace shred {
using namespace platform;

namespace {

constexpr char kSourceTag[] = "modShred,DeleteFileShred";

// Runs one statement of DeleteFileShred; its failure is reported and the next one runs.
void Try(Statement statement) { reportAndLeave(kSourceTag, statement); }

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

void WriteSequence(HANDLE file, std::int16_t repeatCount) {
  BlockWriter writer([file](std::uint32_t offset, std::string_view bytes) { PutAt(file, offset, bytes); },
                     [](const RuntimeError& reason) { ReportError(kSourceTag, reason); });
  for (const OverwriteRun& run : OverwriteSequence(repeatCount))
    if (run.count > 0) writer.Write(run.item, static_cast<std::size_t>(run.count));
  writer.Flush();
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

}  // namespace

bool Validate(const Path& path) {
  return static_cast<bool>(NativeOpen(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
}

// A "\" at the end makes a folder of it.
bool Validate(WideView text) { return !text.ends_with(L'\\') && Validate(PathOf(text)); }

void DeleteFileShred(const Path& path, const std::string& levelText) {
  const ReportBurst burst;
  std::int16_t repeatCount = 0;
  UniqueFile file;
  Try([&] { repeatCount = RepeatCount(levelText); });
  Try([&] { file = OpenForOverwriting(path); });
  WriteSequence(file.get(), repeatCount);
  Try([&] { Close(file); });
  Try([&] {
    if (!NativeDeleteFile(path)) RaiseLastError();
  });
}

void ShredFile(const Path& path, const std::string& levelText) {
  if (Validate(path)) {
    TakeAttributesAway(path);
    DeleteFileShred(path, levelText);
  }
  DoEventsNowAndThen();
}

}  // namespace shred
