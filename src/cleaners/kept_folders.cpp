#include "cleaners/kept_folders.h"

#include <algorithm>
#include <utility>

#include "platform/Reg32.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

// Windows 95, 98 and NT 4 tell Program Files here only. The variables of the process are no more than a hint: whoever starts
// the program sets them.
Path FolderOfRegistry(const WideText& value) {
  return FullPath(TextValue(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", value).value_or(L""));
}

void Append(std::vector<Path>& folders, Path folder) {
  const bool isThere = std::find(folders.begin(), folders.end(), folder) != folders.end();
  if (!isThere && !folder.IsEmpty() && !folder.IsRoot()) folders.push_back(std::move(folder));
}

Path ShellFolder(int identifier, Untold untold) {
  if (untold == Untold::Raises) return FindSpecialFolder(identifier);
  return valueOr(Path(), [identifier] { return FindSpecialFolder(identifier); });
}

}  // namespace

std::vector<Path> SharedFolders(Untold untold) {
  std::vector<Path> folders;
  Append(folders, WindowsFolder());
  Append(folders, SystemFolder());
  // A 32-bit program is shown another folder under the system folder's name, and the folder itself under this one.
  Append(folders, WindowsFolder() / Wide<"Sysnative">());
  for (const WideView value : {Wide<"ProgramFilesDir">(), Wide<"ProgramFilesDir (x86)">(), Wide<"ProgramW6432Dir">(),
                               Wide<"CommonFilesDir">(), Wide<"CommonFilesDir (x86)">(), Wide<"CommonW6432Dir">()})
    Append(folders, FolderOfRegistry(WideText(value)));
  for (const WideView variable :
       {Wide<"ProgramFiles">(), Wide<"ProgramFiles(x86)">(), Wide<"ProgramW6432">(), Wide<"CommonProgramFiles">(),
        Wide<"CommonProgramFiles(x86)">(), Wide<"CommonProgramW6432">(), Wide<"ALLUSERSPROFILE">(), Wide<"ProgramData">(),
        Wide<"PUBLIC">()})
    Append(folders, FullPath(EnvironmentText(variable)));
  for (const int folder : {kProgramFilesFolder, kProgramFilesX86Folder, kCommonFilesFolder, kCommonFilesX86Folder,
                           kAllApplicationDataFolder, kAllDocumentsFolder, kAllDesktopFolder, kAllStartMenuFolder,
                           kAllProgramsFolder, kAllFavoritesFolder, kAllTemplatesFolder})
    Append(folders, ShellFolder(folder, untold));
  return folders;
}

std::vector<Path> KeptFolders(std::vector<Path> shared, Untold untold) {
  std::vector<Path> folders = std::move(shared);
  Append(folders, FullPath(EnvironmentText(Wide<"USERPROFILE">())));
  for (const int folder :
       {kProfileFolder, kDesktopFolder, kDocumentsFolder, kPicturesFolder, kMusicFolder, kVideoFolder, kFavoritesFolder,
        kStartMenuFolder, kProgramsFolder, kTemplatesFolder, kApplicationDataFolder, kLocalApplicationDataFolder})
    Append(folders, ShellFolder(folder, untold));
  return folders;
}

}  // namespace cleaners
