#include "platform/open_folder.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "platform/file_itself.h"
#include "platform/message_pump.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

// Some of the driver kit's numbers, which not all headers have.
constexpr ULONG kDirectoryFile = 0x1, kSynchronous = 0x20, kNonDirectoryFile = 0x40, kDeleteOnClose = 0x1000,
                kForBackup = 0x4000, kOpenReparsePoint = 0x200000;
constexpr ULONG kBothDirectoryInformation = 3, kBasicInformation = 4, kDispositionInformation = 13;
constexpr ULONG kCaseInsensitive = 0x40;

constexpr std::size_t kBlock = 4096;          // bytes of records asked for at once; several of the longest names
constexpr std::size_t kLongestPath = 0x7FFF;  // characters that the system can be asked with

// Nobody may rename or remove the folder, or put a link in its place, while it is open.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr DWORD kSharedByAll = kShared | FILE_SHARE_DELETE;

bool GoesByHandle() {
  static const bool byHandle = late::NtOpenFile && late::NtQueryDirectoryFile && late::NtQueryInformationFile &&
                               late::NtSetInformationFile && late::RtlNtStatusToDosError;
  return byHandle && UsesWideNames();
}

bool Succeeded(LONG status) {
  if (status >= 0) return true;
  ::SetLastError(late::RtlNtStatusToDosError(status));
  return false;
}

}  // namespace

OpenFolder::OpenFolder(const Path& folder) {
  if (GoesByHandle()) {
    folder_ = UniqueFile(
        late::CreateFileWide(folder.Native().c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE, kShared,
                             nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!folder_ || !Judge()) return;
  }
  // Not every disk keeps to the demand not to follow.
  if (!IsFolderAndNoLink(NativeAttributes(folder))) {
    folder_.reset();
    ::SetLastError(ERROR_PATH_NOT_FOUND);
  } else if (!folder_) {
    listing_ = std::make_unique<FolderListing>(folder);
  }
  eventsSeen_ = EventsRun();
}

// By its handle: closes it where it is no folder, or a link.
bool OpenFolder::Judge() {
  if (IsFolderAndNoLink(AttributesOf(folder_.get()))) return true;
  folder_.reset();
  ::SetLastError(ERROR_PATH_NOT_FOUND);
  return false;
}

OpenFolder OpenFolder::Enter(const Path& subfolder) const {
  OpenFolder entered;
  if (!folder_) {
    // One with the name of a device is listed all the same; that there is one is not told.
    if (IsLink(NativeAttributes(subfolder))) return entered;
    entered.listing_ = std::make_unique<FolderListing>(subfolder);
    entered.eventsSeen_ = EventsRun();
    return entered;
  }
  entered.folder_ =
      OpenEntry(subfolder, FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE, kShared, kDirectoryFile | kSynchronous);
  entered.eventsSeen_ = EventsRun();
  if (!entered.folder_ || !entered.Judge()) return OpenFolder();
  // Not every disk keeps to the demand not to follow.
  return IsLink(NativeAttributes(subfolder)) ? OpenFolder() : std::move(entered);
}

bool OpenFolder::IsStillAt(const Path& path, const Path& from) {
  if (eventsSeen_ == EventsRun()) return true;
  const std::optional<FolderIdentity> identity = folder_ ? IdentityOf(folder_.get()) : std::nullopt;
  bool isHere = true;
  if (identity) {
    isHere = path.Native().size() > kLongestPath || (!IsLink(NativeAttributes(path)) && NativeIdentity(path) == identity);
  } else {
    for (Path folder = path; isHere && !folder.IsRoot(); folder.RemoveName()) {
      isHere = !IsLink(NativeAttributes(folder));
      if (folder == from) break;
    }
  }
  if (isHere) eventsSeen_ = EventsRun();
  return isHere;
}

// Nothing but a name is looked up, in this folder alone.
UniqueFile OpenFolder::OpenEntry(const Path& entry, ACCESS_MASK access, ULONG share, ULONG options) const {
  const WideView name = entry.Name();
  UNICODE_STRING text;
  text.Buffer = const_cast<wchar_t*>(name.data());
  text.Length = text.MaximumLength = static_cast<USHORT>(name.size() * sizeof(wchar_t));
  OBJECT_ATTRIBUTES object = {};
  object.Length = sizeof object;
  object.RootDirectory = folder_.get();
  object.ObjectName = &text;
  object.Attributes = kCaseInsensitive;
  IO_STATUS_BLOCK io;
  HANDLE opened = INVALID_HANDLE_VALUE;
  // An empty name would be this folder itself.
  if (name.empty()) {
    ::SetLastError(ERROR_INVALID_NAME);
  } else if (!Succeeded(late::NtOpenFile(&opened, access, &object, &io, share, options | kForBackup | kOpenReparsePoint))) {
    opened = INVALID_HANDLE_VALUE;
  }
  return UniqueFile(opened);
}

bool OpenFolder::Fill() {
  if (ended_) {
    ::SetLastError(ERROR_NO_MORE_FILES);
    return false;
  }
  block_.resize(kBlock / sizeof block_[0]);
  at_ = 0;
  IO_STATUS_BLOCK io;
  ended_ = !Succeeded(late::NtQueryDirectoryFile(folder_.get(), nullptr, nullptr, nullptr, &io, block_.data(), kBlock,
                                                 kBothDirectoryInformation, FALSE, nullptr, startOver_));
  startOver_ = false;
  if (ended_) block_ = std::vector<std::uint64_t>();
  return !ended_;
}

bool OpenFolder::Next(FolderEntry& entry) {
  if (!folder_) return listing_ != nullptr && listing_->Next(entry);
  WideView name;
  while (name.empty()) {
    if (block_.empty() && !Fill()) return false;
    const auto& record =
        *reinterpret_cast<const FILE_BOTH_DIR_INFORMATION*>(reinterpret_cast<const char*>(block_.data()) + at_);
    const WideView listed(record.FileName, record.FileNameLength / sizeof(wchar_t));
    const WideView shortName(record.ShortName, static_cast<std::size_t>(record.ShortNameLength) / sizeof(wchar_t));
    name = UsableName(listed, shortName);
    if (!name.empty()) {
      entry.name = name;
      entry.listedName = listed;
      entry.attributes = record.FileAttributes;
      entry.size = static_cast<std::uint64_t>(record.EndOfFile.QuadPart);
      entry.linkTag = IsLink(record.FileAttributes) ? record.EaSize : 0;
    }
    at_ += record.NextEntryOffset;
    if (record.NextEntryOffset == 0) block_.clear();
  }
  return true;
}

void OpenFolder::StartOver(const Path& path) {
  if (!folder_) listing_ = std::make_unique<FolderListing>(path);
  block_.clear();
  startOver_ = true;
  ended_ = false;
}

void OpenFolder::Rest() {
  const std::size_t done = block_.empty() ? 0 : at_ / sizeof block_[0];  // every record begins at a multiple of that
  // A new vector: emptying one keeps its memory.
  block_ = std::vector<std::uint64_t>(block_.begin() + static_cast<std::ptrdiff_t>(done), block_.end());
  at_ = 0;
}

// What stands in the way, a read-only file or a running one for example, fails the opening.
bool OpenFolder::Delete(const Path& file) const {
  if (!folder_) return NativeDeleteFile(file);
  return static_cast<bool>(OpenEntry(file, DELETE, kSharedByAll, kNonDirectoryFile | kDeleteOnClose));
}

// In two steps: the closing would not tell that the folder is not empty.
bool OpenFolder::Remove(const Path& folder) const {
  if (!folder_) return NativeRemoveFolder(folder);
  const UniqueFile opened = OpenEntry(folder, DELETE, kSharedByAll, kDirectoryFile);
  if (!opened) return false;
  BOOLEAN goes = TRUE;
  IO_STATUS_BLOCK io;
  return Succeeded(late::NtSetInformationFile(opened.get(), &io, &goes, sizeof goes, kDispositionInformation));
}

bool OpenFolder::SetAttributes(const Path& entry, DWORD attributes) const {
  if (!folder_) return NativeSetAttributes(entry, attributes);
  const UniqueFile opened = OpenEntry(entry, FILE_WRITE_ATTRIBUTES | SYNCHRONIZE, kSharedByAll, kSynchronous);
  if (!opened) return false;
  FILE_BASIC_INFORMATION basic = {};  // times of zero stay as they are
  basic.FileAttributes = attributes;
  IO_STATUS_BLOCK io;
  return Succeeded(late::NtSetInformationFile(opened.get(), &io, &basic, sizeof basic, kBasicInformation));
}

UniqueFile OpenFolder::Open(const Path& file, DWORD access, DWORD share) const {
  if (!folder_) return OpenItself(file, access, share);
  UniqueFile opened = OpenEntry(file, access | FILE_READ_ATTRIBUTES | SYNCHRONIZE, share, kNonDirectoryFile | kSynchronous);
  if (!opened || (AttributesOf(opened.get()) & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return opened;
  opened.reset();
  ::SetLastError(ERROR_ACCESS_DENIED);
  return opened;
}

}  // namespace platform
