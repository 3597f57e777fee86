#include "cleaners/folder_facts.h"

#include <algorithm>

#include "platform/Reg32.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"

namespace cleaners {
using namespace platform;

namespace {

// In short names, so that two spellings of one folder compare equal.
Path Canonical(const Path& path) {
  const Path shortened = ShortForm(path);
  return shortened.IsEmpty() ? path : shortened;
}

// Windows 95, 98 and NT 4 tell it here only.
Path ProgramFilesOfRegistry() {
  return FullPath(
      TextValue(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", L"ProgramFilesDir").value_or(L""));
}

bool IsItOrBelow(Path folder, const FolderIdentity& outer) {
  for (; !folder.IsEmpty(); folder.RemoveName())
    if (NativeIdentity(folder) == outer) return true;
  return false;
}

// What the texts of two paths do not show: a link on the way, a drive letter or a share that means a folder.
bool LeadsToOneOf(const std::vector<Path>& folders, const Path& path) {
  const std::optional<FolderIdentity> identity = NativeIdentity(path);
  return identity && std::any_of(folders.begin(), folders.end(), [&identity](const Path& folder) {
           return IsItOrBelow(folder, *identity) || IsItOrBelow(NativeFinalPath(folder), *identity);
         });
}

}  // namespace

std::vector<Path> SystemFolders() {
  return {
      WindowsFolder(),
      SystemFolder(),
      ProgramFolder(),
      ProgramFilesOfRegistry(),
      FullPath(EnvironmentText(Wide<"USERPROFILE">())),
      FullPath(EnvironmentText(Wide<"ProgramFiles">())),
      FindSpecialFolder(kProfileFolder),
      FindSpecialFolder(kProgramFilesFolder),
  };
}

FolderFacts FindFolderFacts(const Path& folder, const std::vector<Path>& keep) {
  FolderFacts facts;
  facts.canonical = Canonical(folder);
  facts.isLink = IsLink(NativeAttributes(folder));
  for (const Path& kept : keep) facts.keep.push_back(Canonical(kept));
  facts.leadsToKept = LeadsToOneOf(keep, folder);
  return facts;
}

}  // namespace cleaners
