#include "platform/native_files.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <string_view>

#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

constexpr std::size_t kShortNameLength = 12;  // 8.3
constexpr DWORD kLongestPath = 0x8000;        // characters

template <class Char>
std::basic_string<Char> TextOf(DWORD (*ask)(Char* text, DWORD size, const void* about), const void* about) {
  std::basic_string<Char> text(MAX_PATH, Char());
  for (;;) {
    const DWORD size = static_cast<DWORD>(text.size());
    const DWORD length = ask(text.data(), size, about);
    text.resize(length < size ? length : std::max(2 * size, length));
    if (length < size) return text;
    if (size > kLongestPath) return {};
  }
}

// The ANSI listing record in the wide one.
void CopyEntry(const WIN32_FIND_DATAA& from, WIN32_FIND_DATAW& to) {
  to.dwFileAttributes = from.dwFileAttributes;
  to.nFileSizeHigh = from.nFileSizeHigh;
  to.nFileSizeLow = from.nFileSizeLow;
  to.dwReserved0 = from.dwReserved0;
  ::MultiByteToWideChar(CP_ACP, 0, from.cFileName, -1, to.cFileName, static_cast<int>(std::size(to.cFileName)));
  ::MultiByteToWideChar(CP_ACP, 0, from.cAlternateFileName, -1, to.cAlternateFileName,
                        static_cast<int>(std::size(to.cAlternateFileName)));
}

// A folder needs no access for what is asked of it here.
UniqueFile OpenToAsk(const Path& folder) {
  if (!UsesWideNames()) return UniqueFile();
  return UniqueFile(late::CreateFileWide(folder.Native().c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

UniqueFile Open(const Path& path, DWORD access, DWORD share, DWORD disposition) {
  return UniqueFile(
      UsesWideNames()
          ? late::CreateFileWide(path.Native().c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)
          : ::CreateFileA(AnsiForm(path).c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

WideText SystemText(DWORD (*wide)(wchar_t* text, DWORD size, const void* about),
                    DWORD (*ansi)(char* text, DWORD size, const void* about), const void* about) {
  return UsesWideNames() ? TextOf(wide, about) : Widen(TextOf(ansi, about));
}

Path PathOf(WideView text) {
  Path spelled = SpelledPath(text);
  if (!spelled.IsEmpty()) return spelled;
  const RelativeText relative = SplitRelative(text);
  if (relative.from.empty()) return {};
  const WideText from = SystemText(
      [](wchar_t* full, DWORD size, const void* about) -> DWORD {
        return late::GetFullPathNameWide(static_cast<const wchar_t*>(about), size, full, nullptr);
      },
      [](char* full, DWORD size, const void* about) -> DWORD {
        return ::GetFullPathNameA(Narrow(static_cast<const wchar_t*>(about)).c_str(), size, full, nullptr);
      },
      relative.from.c_str());
  return SpelledPath(from).Resolve(relative.rest);
}

Path ShortForm(const Path& path) {
  return SpelledPath(SystemText(
      [](wchar_t* text, DWORD size, const void* about) -> DWORD {
        return late::GetShortPathNameWide(static_cast<const Path*>(about)->Native().c_str(), text, size);
      },
      [](char* text, DWORD size, const void* about) -> DWORD {
        return ::GetShortPathNameA(AnsiForm(*static_cast<const Path*>(about)).c_str(), text, size);
      },
      &path));
}

std::string AnsiForm(const Path& path) { return NarrowExactly(path.Native()).value_or(""); }

void RaiseLastError() { RaiseSystemError(::GetLastError()); }

void WriteOrRaise(HANDLE file, const void* bytes, std::size_t count) {
  DWORD written = 0;
  if (!::WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr)) RaiseLastError();
  if (written != count) Raise(kDiskFull);
}

DWORD NativeAttributes(const Path& path) {
  return UsesWideNames() ? late::GetFileAttributesWide(path.Native().c_str()) : ::GetFileAttributesA(AnsiForm(path).c_str());
}

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsLink(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool IsFolderAndNoLink(DWORD attributes) { return IsFolder(attributes) && !IsLink(attributes); }

bool IsNamedLink(const FolderEntry& entry) {
  constexpr DWORD kNameSurrogate = 0x20000000;
  return IsLink(entry.attributes) && (entry.linkTag & kNameSurrogate) != 0;
}

bool IsNamedLinkAt(const Path& path) {
  FolderListing listing(path.Parent(), path.Name());
  FolderEntry entry;
  return listing.Next(entry) && IsNamedLink(entry);
}

bool NativeDeleteFile(const Path& path) {
  return (UsesWideNames() ? late::DeleteFileWide(path.Native().c_str()) : ::DeleteFileA(AnsiForm(path).c_str())) != 0;
}

bool NativeRemoveFolder(const Path& path) {
  return (UsesWideNames() ? late::RemoveDirectoryWide(path.Native().c_str()) : ::RemoveDirectoryA(AnsiForm(path).c_str())) !=
         0;
}

bool NativeMakeFolder(const Path& path) {
  return (UsesWideNames() ? late::CreateDirectoryWide(path.Native().c_str(), nullptr)
                          : ::CreateDirectoryA(AnsiForm(path).c_str(), nullptr)) != 0;
}

bool NativeSetAttributes(const Path& path, DWORD attributes) {
  return (UsesWideNames() ? late::SetFileAttributesWide(path.Native().c_str(), attributes)
                          : ::SetFileAttributesA(AnsiForm(path).c_str(), attributes)) != 0;
}

UniqueFile NativeOpen(const Path& path, DWORD access, DWORD share) { return Open(path, access, share, OPEN_EXISTING); }
UniqueFile NativeOpenForWriting(const Path& path) { return NativeOpen(path, GENERIC_WRITE, 0); }
UniqueFile NativeCreate(const Path& path) { return Open(path, GENERIC_WRITE, 0, CREATE_ALWAYS); }

std::optional<FolderIdentity> NativeIdentity(const Path& folder) {
  const UniqueFile opened = OpenToAsk(folder);
  return opened ? IdentityOf(opened.get()) : std::nullopt;
}

std::optional<FolderIdentity> IdentityOf(HANDLE opened) {
  BY_HANDLE_FILE_INFORMATION found;
  if (!::GetFileInformationByHandle(opened, &found)) return {};
  if (found.nFileIndexHigh == 0 && found.nFileIndexLow == 0) return {};  // a file system that numbers nothing
  return FolderIdentity{found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow};
}

Path NativeFinalPath(const Path& folder) {
  const UniqueFile opened = OpenToAsk(folder);
  return opened ? FinalPathOf(opened.get()) : Path();
}

Path FinalPathOf(HANDLE opened) {
  if (!late::GetFinalPathNameByHandle) return {};
  return SpelledPath(TextOf<wchar_t>(
      [](wchar_t* text, DWORD size, const void* handle) -> DWORD {
        return late::GetFinalPathNameByHandle(const_cast<void*>(handle), text, size, 0);
      },
      opened));
}

FolderListing::FolderListing(const Path& folder, WideView mask) {
  if (!folder.IsEmpty()) pattern_ = AppendBackslash(folder.Native()).append(mask);
  length_ = pattern_.size();
}

bool FolderListing::Read() {
  const bool first = !started_;
  started_ = true;
  if (UsesWideNames()) {
    if (!first) return late::FindNextFileWide(find_.get(), &data_) != 0;
    find_.reset(late::FindFirstFileWide(pattern_.c_str(), &data_));
    pattern_ = WideText();
    return static_cast<bool>(find_);
  }
  WIN32_FIND_DATAA ansi = {};  // not every system fills every field
  if (first) {
    find_.reset(::FindFirstFileA(NarrowExactly(pattern_).value_or("").c_str(), &ansi));
    if (!find_) return false;
  } else if (!::FindNextFileA(find_.get(), &ansi)) {
    return false;
  }
  CopyEntry(ansi, data_);
  return true;
}

WideView UsableName(WideView name, WideView shortName, bool tooLong) {
  // The two entries of every folder have no short name; a name that only looks like theirs has one.
  if ((name == Wide<".">() || name == Wide<"..">()) && shortName.empty()) return name;
  if (LeadsToItself(name) && !(tooLong && LeadsToItself(shortName))) return name;
  return LeadsToItself(shortName) ? shortName : WideView();
}

WideView FolderListing::Usable() const {
  const WideView name = data_.cFileName;
  // Room for a short name in the folder, as the A functions ask for.
  const bool tooLong = !UsesWideNames() && length_ + name.size() + kShortNameLength >= MAX_PATH;
  return UsableName(name, data_.cAlternateFileName, tooLong);
}

bool FolderListing::Next(FolderEntry& entry) {
  if (started_ && !find_) return false;
  WideView name;
  while (name.empty()) {
    if (!Read()) {
      const DWORD reason = ::GetLastError();
      find_.reset();
      ::SetLastError(reason);
      return false;
    }
    name = Usable();
  }
  entry.name = name;
  entry.listedName = data_.cFileName;
  entry.attributes = data_.dwFileAttributes;
  entry.size = (static_cast<std::uint64_t>(data_.nFileSizeHigh) << 32) | data_.nFileSizeLow;
  entry.linkTag = IsLink(entry.attributes) ? data_.dwReserved0 : 0;
  return true;
}

}  // namespace platform
