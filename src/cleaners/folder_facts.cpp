#include "cleaners/folder_facts.h"

#include <algorithm>

#include "platform/native_files.h"
#include "platform/path_text.h"
#include "platform/special_folder.h"

namespace cleaners {
using namespace platform;

namespace {

// Full and in short names, so that two spellings of one folder compare equal. Empty for an empty path.
std::string Canonical(const std::string& path) {
  if (path.empty()) return {};
  char full[MAX_PATH];
  char* namePart = nullptr;
  const DWORD length = ::GetFullPathNameA(path.c_str(), sizeof full, full, &namePart);
  if (length == 0 || length >= sizeof full) return path;
  char shortened[MAX_PATH];
  const DWORD shortLength = ::GetShortPathNameA(full, shortened, sizeof shortened);
  return AppendBackslash(shortLength != 0 && shortLength < sizeof shortened ? shortened : full);
}

std::string WindowsFolder() {
  char folder[MAX_PATH] = "";
  ::GetWindowsDirectoryA(folder, sizeof folder);
  return folder;
}

std::string SystemFolder() {
  char folder[MAX_PATH] = "";
  ::GetSystemDirectoryA(folder, sizeof folder);
  return folder;
}

// Windows 95, 98 and NT 4 tell it here only.
std::string ProgramFilesOfRegistry() {
  HKEY opened = nullptr;
  ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Windows\\CurrentVersion", 0, KEY_QUERY_VALUE, &opened);
  const UniqueKey key(opened);
  char folder[MAX_PATH + 1] = "";  // a value may lack its zero
  DWORD size = MAX_PATH;
  const LONG status =
      ::RegQueryValueExA(key.get(), "ProgramFilesDir", nullptr, nullptr, reinterpret_cast<BYTE*>(folder), &size);
  return status == ERROR_SUCCESS ? folder : "";
}

// Empty above the topmost.
NativePath FolderAbove(const NativePath& folder) {
  const std::size_t slash = folder.find_last_of(L'\\', folder.size() - 2);
  return slash == NativePath::npos ? NativePath() : folder.substr(0, slash + 1);
}

bool IsItOrBelow(NativePath folder, const FolderIdentity& outer) {
  for (; folder.size() > 1; folder = FolderAbove(folder))
    if (NativeIdentity(folder) == outer) return true;
  return false;
}

// What the texts of two paths do not show: a link on the way, a drive letter or a share that stands for a folder.
bool LeadsToOneOf(const std::vector<std::string>& folders, const std::string& path) {
  const std::optional<FolderIdentity> identity = NativeIdentity(ToNativePath(path));
  return identity && std::any_of(folders.begin(), folders.end(), [&identity](const std::string& folder) {
           const NativePath native = ToNativePath(folder);
           return IsItOrBelow(native, *identity) || IsItOrBelow(NativeFinalPath(native), *identity);
         });
}

}  // namespace

std::string EnvironmentText(const char* name) {
  char value[MAX_PATH * 2] = "";
  const DWORD length = ::GetEnvironmentVariableA(name, value, sizeof value);
  return length < sizeof value ? value : "";
}

std::vector<std::string> SystemFolders() {
  return {
      WindowsFolder(),
      SystemFolder(),
      ProgramFolder(),
      ProgramFilesOfRegistry(),
      EnvironmentText("USERPROFILE"),
      EnvironmentText("ProgramFiles"),
      FindSpecialFolder(kProfileFolder),
      FindSpecialFolder(kProgramFilesFolder),
  };
}

FolderFacts FindFolderFacts(const std::string& folder, const std::vector<std::string>& keep) {
  const std::string withBackslash = AppendBackslash(folder);
  FolderFacts facts;
  facts.canonical = Canonical(withBackslash);
  // Asked without the "\" behind it: with it some systems answer for the link's target.
  facts.isLink = IsLink(NativeAttributes(ToNativePath(withBackslash.substr(0, withBackslash.size() - 1))));
  for (const std::string& kept : keep) facts.keep.push_back(Canonical(kept));
  facts.leadsToKept = LeadsToOneOf(keep, withBackslash);
  return facts;
}

}  // namespace cleaners
