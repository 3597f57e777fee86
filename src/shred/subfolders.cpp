#include "shred/subfolders.h"

#include <algorithm>

#include "platform/native_files.h"
#include "platform/path_text.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/win32.h"

namespace shred {
using namespace platform;

namespace {

bool IsListed(const FolderEntry& entry) {
  return IsFolderAndNoLink(entry.attributes) && entry.name != L"." && entry.name != L"..";
}

std::string NameIn(const NativePath& folder, const FolderEntry& entry) {
  const std::string path = AnsiPath(folder + entry.name);
  return path.substr(path.rfind('\\') + 1);
}

}  // namespace

std::vector<std::string> Drives() {
  std::vector<std::string> drives;
  const DWORD present = ::GetLogicalDrives();
  for (int letter = 0; letter < 26; ++letter)
    if ((present & (1u << letter)) != 0) drives.push_back(std::string(1, static_cast<char>('A' + letter)) + ":");
  return drives;
}

std::vector<std::string> Subfolders(const std::string& folder) {
  std::vector<std::string> names;
  const NativePath native = ToNativePath(AppendBackslash(folder));
  if (native.empty()) Raise(kPathNotFound);
  FolderListing listing(native);
  for (FolderEntry entry; listing.Next(entry);)
    if (IsListed(entry)) names.push_back(NameIn(native, entry));
  const DWORD end = ::GetLastError();
  // An empty root has not even the two entries of every other folder.
  if (end != ERROR_NO_MORE_FILES && end != ERROR_FILE_NOT_FOUND) RaiseSystemError(end);
  std::erase(names, "");
  std::sort(names.begin(), names.end(),
            [](const std::string& one, const std::string& other) { return ::lstrcmpiA(one.c_str(), other.c_str()) < 0; });
  return names;
}

}  // namespace shred
