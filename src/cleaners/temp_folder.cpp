#include "cleaners/temp_folder.h"

#include "cleaners/folder_facts.h"
#include "platform/path_text.h"
#include "platform/special_folder.h"
#include "platform/win32.h"

namespace cleaners {
using namespace platform;

namespace {

std::vector<std::string> FoldersToKeep() {
  std::vector<std::string> folders = SystemFolders();
  for (const int folder : {kDesktopFolder, kDocumentsFolder, kApplicationDataFolder, kLocalApplicationDataFolder})
    folders.push_back(FindSpecialFolder(folder));
  return folders;
}

}  // namespace

std::string GetTempDir() {
  char folder[256] = "";
  const DWORD length = ::GetTempPathA(255, folder);
  return length < 255 ? folder : "";
}

TempFolderFacts FindTempFolderFacts() {
  TempFolderFacts facts;
  facts.configured = EnvironmentText("TMP");
  if (facts.configured.empty()) facts.configured = EnvironmentText("TEMP");
  facts.reported = AppendBackslash(GetTempDir());
  static_cast<FolderFacts&>(facts) = FindFolderFacts(facts.reported, FoldersToKeep());
  return facts;
}

}  // namespace cleaners
