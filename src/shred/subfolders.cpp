#include "shred/subfolders.h"

#include <algorithm>

#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace shred {
using namespace platform;

namespace {

bool IsListed(const FolderEntry& entry) {
  return IsFolderAndNoLink(entry.attributes) && entry.name != L"." && entry.name != L"..";
}

bool ComesBefore(const WideText& one, const WideText& other) {
  if (!UsesWideNames()) return ::lstrcmpiA(Narrow(one).c_str(), Narrow(other).c_str()) < 0;
  return late::CompareStringWide(LOCALE_USER_DEFAULT, NORM_IGNORECASE, one.data(), static_cast<int>(one.size()),
                                 other.data(), static_cast<int>(other.size())) == CSTR_LESS_THAN;
}

}  // namespace

std::vector<std::string> Drives() {
  std::vector<std::string> drives;
  const DWORD present = ::GetLogicalDrives();
  for (int letter = 0; letter < 26; ++letter)
    if ((present & (1u << letter)) != 0) drives.push_back(std::string(1, static_cast<char>('A' + letter)) + ":");
  return drives;
}

std::vector<WideText> Subfolders(const Path& folder) {
  std::vector<WideText> names;
  if (folder.IsEmpty()) Raise(kPathNotFound);
  FolderListing listing(folder);
  for (FolderEntry entry; listing.Next(entry);)
    if (IsListed(entry)) names.push_back(entry.name);
  const DWORD end = ::GetLastError();
  // An empty root has not even the two entries of every other folder.
  if (end != ERROR_NO_MORE_FILES && end != ERROR_FILE_NOT_FOUND) RaiseSystemError(end);
  std::sort(names.begin(), names.end(), &ComesBefore);
  return names;
}

}  // namespace shred
