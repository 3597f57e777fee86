#include "platform/native_files.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

std::wstring Widen(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length)));
  return wide;
}

// Empty on a system that does not know the flags.
std::string Narrow(const std::wstring& text, DWORD flags = 0) {
  const int length = static_cast<int>(text.size());
  const int needed = ::WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(CP_ACP, flags, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

constexpr std::size_t kShortNameLength = 12;  // 8.3
constexpr wchar_t kPrefix[] = L"\\\\?\\";
constexpr wchar_t kSharePrefix[] = L"\\\\?\\UNC\\";

bool StartsWith(const std::wstring& text, const wchar_t* start) { return text.compare(0, std::wcslen(start), start) == 0; }

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

bool IsDots(const wchar_t* name) { return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0')); }

// Whether a path that ends in the name leads to this entry and to no other. Disks of other systems hold names with a "\" or
// "?", and the conversion to ANSI makes them of characters that look alike. The A functions take blanks and dots at the
// end of a name away, so "x." would lead to "x".
bool LeadsToItsEntry(const wchar_t* name) {
  if (name[0] == L'\0' || std::wcspbrk(name, L"\\/:*?\"<>|") != nullptr) return false;
  if (UsesWideNames()) return true;
  const wchar_t last = name[std::wcslen(name) - 1];
  return last != L' ' && last != L'.';
}

NativePath ShortForm(const NativePath& path) {
  wchar_t text[MAX_PATH];
  const DWORD length = late::GetShortPathNameWide ? late::GetShortPathNameWide(path.c_str(), text, MAX_PATH) : 0;
  return length < MAX_PATH ? NativePath(text, length) : NativePath();
}

// The full path of a name made of dots alone is no full path: what such a name leads to differs between the systems.
bool HasNameOfDots(const std::string& path) {
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find('\\', start), path.size());
    if (end > start && path.find_first_not_of('.', start) >= end) return true;
    start = end + 1;
  }
  return false;
}

std::wstring WithoutPrefix(const NativePath& path) {
  if (StartsWith(path, kSharePrefix)) return L"\\\\" + path.substr(std::wcslen(kSharePrefix));
  return StartsWith(path, kPrefix) ? path.substr(std::wcslen(kPrefix)) : path;
}

// A folder needs no access for what is asked of it here.
UniqueFile OpenFolder(const NativePath& folder) {
  if (folder.empty() || !UsesWideNames()) return UniqueFile();
  return UniqueFile(late::CreateFileWide(folder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

}  // namespace

bool UsesWideNames() {
  static const bool wide = [] {
    return late::GetFileAttributesWide && late::FindFirstFileWide && late::FindNextFileWide && late::DeleteFileWide &&
           late::RemoveDirectoryWide && late::CreateFileWide && late::SetFileAttributesWide &&
           (late::GetFileAttributesWide(L".") != INVALID_FILE_ATTRIBUTES || ::GetLastError() != ERROR_CALL_NOT_IMPLEMENTED);
  }();
  return wide && !AnsiNamesOnly;
}

NativePath ToNativePath(const std::string& path) {
  if (path.empty()) return {};
  char* namePart = nullptr;
  const DWORD needed = ::GetFullPathNameA(path.c_str(), 0, nullptr, &namePart);
  if (needed == 0) return {};
  std::string full(needed, '\0');
  const DWORD length = ::GetFullPathNameA(path.c_str(), needed, full.data(), &namePart);
  if (length == 0 || length >= needed) return {};
  full.resize(length);
  if (HasNameOfDots(full)) return {};
  return ToNativePath(Widen(full));
}

NativePath ToNativePath(const std::wstring& fullPath) {
  if (!UsesWideNames() || StartsWith(fullPath, kPrefix) || StartsWith(fullPath, L"\\\\.\\")) return fullPath;
  return StartsWith(fullPath, L"\\\\") ? kSharePrefix + fullPath.substr(2) : kPrefix + fullPath;
}

std::string ShownPath(const NativePath& path) { return Narrow(WithoutPrefix(path)); }

std::string AnsiPath(const NativePath& path) {
  std::string shown = ShownPath(path);
  if (!UsesWideNames() || ToNativePath(shown) == path) return shown;
  const NativePath shortForm = ShortForm(path);
  std::string shortPath = ShownPath(shortForm);
  if (!shortPath.empty() && ToNativePath(shortPath) == shortForm) return shortPath;
  const std::string marked = Narrow(WithoutPrefix(path), WC_NO_BEST_FIT_CHARS);
  return marked.find('?') != std::string::npos ? marked : std::string();
}

void RaiseLastError() { RaiseSystemError(::GetLastError()); }

void WriteOrRaise(HANDLE file, const void* bytes, std::size_t count) {
  DWORD written = 0;
  if (!::WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr)) RaiseLastError();
  if (written != count) Raise(kDiskFull);
}

DWORD NativeAttributes(const NativePath& path) {
  if (path.empty()) return INVALID_FILE_ATTRIBUTES;
  return UsesWideNames() ? late::GetFileAttributesWide(path.c_str()) : ::GetFileAttributesA(Narrow(path).c_str());
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

bool NativeDeleteFile(const NativePath& path) {
  return (UsesWideNames() ? late::DeleteFileWide(path.c_str()) : ::DeleteFileA(Narrow(path).c_str())) != 0;
}

bool NativeRemoveFolder(const NativePath& path) {
  return (UsesWideNames() ? late::RemoveDirectoryWide(path.c_str()) : ::RemoveDirectoryA(Narrow(path).c_str())) != 0;
}

bool NativeSetAttributes(const NativePath& path, DWORD attributes) {
  return (UsesWideNames() ? late::SetFileAttributesWide(path.c_str(), attributes)
                          : ::SetFileAttributesA(Narrow(path).c_str(), attributes)) != 0;
}

UniqueFile NativeOpen(const NativePath& path, DWORD access, DWORD share) {
  return UniqueFile(UsesWideNames()
                        ? late::CreateFileWide(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr)
                        : ::CreateFileA(Narrow(path).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

UniqueFile NativeOpenForWriting(const NativePath& path) { return NativeOpen(path, GENERIC_WRITE, 0); }

std::uint64_t NativeFileLength(const NativePath& path) {
  const UniqueFile file = NativeOpenForWriting(path);
  DWORD high = 0;
  const DWORD low = file ? ::GetFileSize(file.get(), &high) : 0;
  return (static_cast<std::uint64_t>(high) << 32) | low;
}

std::optional<FolderIdentity> NativeIdentity(const NativePath& folder) {
  const UniqueFile opened = OpenFolder(folder);
  BY_HANDLE_FILE_INFORMATION found;
  if (!opened || !::GetFileInformationByHandle(opened.get(), &found)) return {};
  if (found.nFileIndexHigh == 0 && found.nFileIndexLow == 0) return {};  // a file system that numbers nothing
  return FolderIdentity{found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow};
}

NativePath NativeFinalPath(const NativePath& folder) {
  const UniqueFile opened = OpenFolder(folder);
  if (!opened || !late::GetFinalPathNameByHandle) return {};
  const DWORD needed = late::GetFinalPathNameByHandle(opened.get(), nullptr, 0, 0);
  NativePath path(needed, L'\0');
  const DWORD length = late::GetFinalPathNameByHandle(opened.get(), path.data(), needed, 0);
  path.resize(length < needed ? length : 0);
  return path;
}

FolderListing::FolderListing(const NativePath& folderWithBackslash) : pattern_(folderWithBackslash + L"*") {}

bool FolderListing::Read() {
  const bool first = !started_;
  started_ = true;
  if (UsesWideNames()) {
    if (!first) return late::FindNextFileWide(find_.get(), &data_) != 0;
    find_.reset(late::FindFirstFileWide(pattern_.c_str(), &data_));
    return static_cast<bool>(find_);
  }
  WIN32_FIND_DATAA ansi = {};  // not every system fills what it says nothing in
  if (first) {
    find_.reset(::FindFirstFileA(Narrow(pattern_).c_str(), &ansi));
    if (!find_) return false;
  } else if (!::FindNextFileA(find_.get(), &ansi)) {
    return false;
  }
  CopyEntry(ansi, data_);
  return true;
}

const wchar_t* FolderListing::UsableName() const {
  const wchar_t* name = data_.cFileName;
  const wchar_t* shortName = data_.cAlternateFileName;
  // The two entries of every folder have no short name; a name that only looks like theirs has one.
  if (IsDots(name) && shortName[0] == L'\0') return name;
  // Room for a short name in the folder, as the A functions ask for.
  const bool tooLong = !UsesWideNames() && pattern_.size() + std::wcslen(name) + kShortNameLength >= MAX_PATH;
  if (LeadsToItsEntry(name) && !IsDots(name) && !(tooLong && LeadsToItsEntry(shortName))) return name;
  return LeadsToItsEntry(shortName) ? shortName : nullptr;
}

bool FolderListing::Next(FolderEntry& entry) {
  if (started_ && !find_) return false;
  const wchar_t* name = nullptr;
  while (name == nullptr) {
    if (!Read()) {
      const DWORD reason = ::GetLastError();
      find_.reset();
      ::SetLastError(reason);
      return false;
    }
    name = UsableName();
  }
  entry.name = name;
  entry.listedName = data_.cFileName;
  entry.attributes = data_.dwFileAttributes;
  entry.size = (static_cast<std::uint64_t>(data_.nFileSizeHigh) << 32) | data_.nFileSizeLow;
  entry.linkTag = IsLink(entry.attributes) ? data_.dwReserved0 : 0;
  return true;
}

}  // namespace platform
