#include "cleaners/temp_folder.h"

#include "cleaners/folder_facts.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

std::vector<Path> FoldersToKeep() {
  std::vector<Path> folders = SystemFolders();
  for (const int folder : {kDesktopFolder, kDocumentsFolder, kApplicationDataFolder, kLocalApplicationDataFolder})
    folders.push_back(FindSpecialFolder(folder));
  return folders;
}

}  // namespace

WideText GetTempDir() {
  constexpr DWORD kSize = 255;  // characters, the NUL among them
  if (UsesWideNames()) {
    wchar_t folder[kSize] = L"";
    return late::GetTempPathWide(kSize, folder) < kSize ? folder : L"";
  }
  char folder[kSize] = "";
  return Widen(::GetTempPathA(kSize, folder) < kSize ? folder : "");
}

TempFolderFacts FindTempFolderFacts() {
  TempFolderFacts facts;
  facts.configured = EnvironmentText(Wide<"TMP">());
  if (facts.configured.empty()) facts.configured = EnvironmentText(Wide<"TEMP">());
  facts.reported = AppendBackslash(GetTempDir());
  static_cast<FolderFacts&>(facts) = FindFolderFacts(FullPath(facts.reported), FoldersToKeep());
  return facts;
}

}  // namespace cleaners
