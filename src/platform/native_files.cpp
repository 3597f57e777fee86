#include "platform/native_files.h"

#include <cstring>

#include "platform/system_functions.h"

namespace {

std::wstring Widen(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length)));
  return wide;
}

std::string Narrow(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  const int needed = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

constexpr wchar_t kPrefix[] = L"\\\\?\\";
constexpr wchar_t kSharePrefix[] = L"\\\\?\\UNC\\";

bool StartsWith(const std::wstring& text, const wchar_t* start) { return text.compare(0, std::wcslen(start), start) == 0; }

// The ANSI listing record in the wide one. A name with "?" in it holds characters outside the code page.
void CopyEntry(const WIN32_FIND_DATAA& from, WIN32_FIND_DATAW& to) {
  to.dwFileAttributes = from.dwFileAttributes;
  to.nFileSizeHigh = from.nFileSizeHigh;
  to.nFileSizeLow = from.nFileSizeLow;
  const bool reachable = std::strchr(from.cFileName, '?') == nullptr || from.cAlternateFileName[0] == '\0';
  const char* name = reachable ? from.cFileName : from.cAlternateFileName;
  ::MultiByteToWideChar(CP_ACP, 0, name, -1, to.cFileName, MAX_PATH);
}

}  // namespace

bool UsesWideNames() {
  static const bool wide = [] {
    return late::GetFileAttributesWide && late::FindFirstFileWide && late::FindNextFileWide && late::DeleteFileWide &&
           late::RemoveDirectoryWide && late::CreateFileWide &&
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
  std::wstring wide = Widen(full);
  if (!UsesWideNames() || StartsWith(wide, kPrefix) || StartsWith(wide, L"\\\\.\\")) return wide;
  return StartsWith(wide, L"\\\\") ? kSharePrefix + wide.substr(2) : kPrefix + wide;
}

std::string ShownPath(const NativePath& path) {
  if (StartsWith(path, kSharePrefix)) return "\\\\" + Narrow(path.substr(std::wcslen(kSharePrefix)));
  if (StartsWith(path, kPrefix)) return Narrow(path.substr(std::wcslen(kPrefix)));
  return Narrow(path);
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

bool NativeDeleteFile(const NativePath& path) {
  return (UsesWideNames() ? late::DeleteFileWide(path.c_str()) : ::DeleteFileA(Narrow(path).c_str())) != 0;
}

bool NativeRemoveFolder(const NativePath& path) {
  return (UsesWideNames() ? late::RemoveDirectoryWide(path.c_str()) : ::RemoveDirectoryA(Narrow(path).c_str())) != 0;
}

UniqueFile NativeOpenForWriting(const NativePath& path) {
  return UniqueFile(UsesWideNames()
                        ? late::CreateFileWide(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr)
                        : ::CreateFileA(Narrow(path).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
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
  WIN32_FIND_DATAA ansi;
  if (first) {
    find_.reset(::FindFirstFileA(Narrow(pattern_).c_str(), &ansi));
    if (!find_) return false;
  } else if (!::FindNextFileA(find_.get(), &ansi)) {
    return false;
  }
  CopyEntry(ansi, data_);
  return true;
}

bool FolderListing::Next(FolderEntry& entry) {
  if (started_ && !find_) return false;
  if (!Read()) {
    find_.reset();
    return false;
  }
  entry.name = data_.cFileName;
  entry.attributes = data_.dwFileAttributes;
  entry.size = (static_cast<std::uint64_t>(data_.nFileSizeHigh) << 32) | data_.nFileSizeLow;
  return true;
}
