#include "shred/modShred.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "cleaners/locked_files.h"
#include "platform/ErroHandle.h"
#include "platform/file_itself.h"
#include "platform/handles.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/told_of_files.h"
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

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;  // what others only look at can be overwritten all the same
constexpr DWORD kSharedByAll = kShared | FILE_SHARE_DELETE;
constexpr DWORD kInTheWay = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

// Bytes.
std::uint64_t LengthOf(HANDLE file) {
  DWORD high = 0;
  const std::uint64_t low = ::GetFileSize(file, &high);
  return static_cast<std::uint64_t>(high) << 32 | low;
}

// One file from its opening to its deletion. What was opened is what is deleted, whatever its path leads to by then: a
// message may be on the screen between the two. On Windows 9x, where no handle deletes, it is the path.
class Victim {
 public:
  explicit Victim(const Path& path) : path_(path) {}

  // What is read-only or leads elsewhere is refused and not left to the system: some file systems and some users are let in,
  // and a link's target is not what is deleted afterwards.
  void Open() {
    if (file_) return;
    if (path_.IsEmpty()) Raise(kBadFileName);  // of a device for example
    if (!CanDeleteByHandle() && (AttributesOrRaise() & FILE_ATTRIBUTE_READONLY) != 0) Raise(kPermissionDenied);
    if (cleaners::TryWhileLocked([this] { return OpenWith(DELETE) || OpenWith(0); })) return;
    const DWORD reason = ::GetLastError();
    isReparsePoint_ = IsLink(AttributesOrRaise());
    if (const UniqueFile looked = OpenItself(path_, 0, kSharedByAll)) identity_ = IdentityOf(looked.get());
    RaiseSystemError(reason);
  }

  // One opening in the place of two and a look at the attributes: whether the file is plain, and can be read, overwritten
  // and deleted, all at once. False where anything of that is not so, or the system does not tell; nothing is open then.
  bool OpenPlain() {
    if (path_.IsEmpty() || !OpenWith(DELETE | GENERIC_READ)) return false;
    if ((AttributesOf(file_.get()) & kInTheWay) == 0) return true;
    file_.reset();
    deletes_ = false;
    return false;
  }

  HANDLE Handle() const { return file_.get(); }

  // The bytes reach the disk first: a deletion that overtakes them would leave the old ones there.
  void Close() {
    const bool flushed = !file_ || ::FlushFileBuffers(file_.get());
    const DWORD reason = ::GetLastError();
    if (!deletes_) file_.reset();
    if (!flushed) RaiseSystemError(reason);
  }

  void Delete(bool isOverwritten) {
    const bool isDone = deletes_ ? DeleteByHandle(file_.get()) : cleaners::TryWhileLocked([this] { return DeleteByPath(); });
    file_.reset();
    if (!Told(isDone, Trace::File, path_, length_)) RaiseLastError();
    if (!isOverwritten) TellStayed(path_, Why::NotOverwritten);
  }

 private:
  DWORD AttributesOrRaise() const {
    const DWORD attributes = NativeAttributes(path_);
    if (attributes == INVALID_FILE_ATTRIBUTES) RaiseLastError();
    return attributes;
  }

  bool OpenWith(DWORD deletion) {
    if (deletion != 0 && !CanDeleteByHandle()) return false;
    file_ = OpenItself(path_, GENERIC_WRITE | deletion, kShared);
    if (!file_) return false;
    deletes_ = deletion != 0;
    if (!deletes_) identity_ = IdentityOf(file_.get());
    if (Listening != nullptr) length_ = LengthOf(file_.get());  // the overwriting may make it longer
    return true;
  }

  // A link goes as one. A reparse point that is a file itself, an offline one for example, stays: it is not overwritten.
  bool DeleteByPath() {
    if (!CanDeleteByHandle()) return NativeDeleteFile(path_);
    if (isReparsePoint_) {
      if (IsNamedLinkAt(path_)) return NativeDeleteFile(path_);
      ::SetLastError(ERROR_ACCESS_DENIED);
      return false;
    }
    const UniqueFile again = OpenItself(path_, DELETE, kSharedByAll);
    if (!again) return false;
    if (identity_ && IdentityOf(again.get()) == identity_) return DeleteByHandle(again.get());
    ::SetLastError(ERROR_FILE_NOT_FOUND);
    return false;
  }

  const Path& path_;
  UniqueFile file_;
  std::uint64_t length_ = 0;
  bool deletes_ = false;  // the handle does
  bool isReparsePoint_ = false;
  std::optional<FolderIdentity> identity_;
};

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

RuntimeError OverwriteAndDelete(Victim& victim, const std::string& levelText) {
  const ReportBurst burst;
  Failures failures;
  std::int16_t repeatCount = 0;
  failures.Try([&] { repeatCount = RepeatCount(levelText); });
  failures.Try([&] { victim.Open(); });
  WriteSequence(victim.Handle(), repeatCount, failures);
  failures.Try([&] { victim.Close(); });
  const bool isOverwritten = !failures.First();
  failures.Try([&] { victim.Delete(isOverwritten); });
  return failures.First();
}

// Of a file that is read-only, hidden or of the system, while this lives. One that is still there at the end gets them back.
class WithoutAttributes {
 public:
  // Setting them takes as long as all the rest, so only where there is something to clear.
  WithoutAttributes(const Path& path, DWORD attributes) : path_(path) {
    if ((attributes & kInTheWay) == 0) return;
    const UniqueFile looked = OpenItself(path, 0, kSharedByAll);  // never those of a link's target
    if (!looked || !NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL)) return;
    taken_ = attributes;
    identity_ = IdentityOf(looked.get());
  }
  WithoutAttributes(const WithoutAttributes&) = delete;
  WithoutAttributes& operator=(const WithoutAttributes&) = delete;
  ~WithoutAttributes() {
    if (taken_ == 0) return;
    const UniqueFile left = OpenItself(path_, 0, kSharedByAll);
    if (left && IdentityOf(left.get()) == identity_) NativeSetAttributes(path_, taken_);
  }

 private:
  const Path& path_;
  DWORD taken_ = 0;
  std::optional<FolderIdentity> identity_;
};

UniqueFile OpenForReading(const Path& path) { return NativeOpen(path, GENERIC_READ, kShared); }

// Of a file that can be read. Asked of what is open, which takes a fraction of looking the path up once more.
DWORD AttributesOfReadable(const Path& path) {
  const UniqueFile file = OpenForReading(path);
  if (!file) {
    Told(false, Trace::File, path);
    RaiseLastError();
  }
  const DWORD attributes = AttributesOf(file.get());
  return attributes != INVALID_FILE_ATTRIBUTES ? attributes : 0;  // nothing to clear where the system does not tell
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

bool Validate(const Path& path) { return static_cast<bool>(OpenForReading(path)); }

RuntimeError DeleteFileShred(const Path& path, const std::string& levelText) {
  Victim victim(path);
  return OverwriteAndDelete(victim, levelText);
}

RuntimeError ShredFile(const Path& path, const std::string& levelText) {
  Victim victim(path);
  if (victim.OpenPlain()) return OverwriteAndDelete(victim, levelText);
  DWORD attributes = 0;
  RuntimeError failure = failureOf([&] { attributes = AttributesOfReadable(path); });
  if (!failure) {
    const WithoutAttributes whileShredded(path, attributes);
    failure = DeleteFileShred(path, levelText);
  }
  return failure;
}

}  // namespace shred
