#include "cleaners/temp_folder.h"

#include <vector>

#include "cleaners/folder_facts.h"
#include "cleaners/folder_guard.h"
#include "cleaners/kept_folders.h"
#include "platform/final_path.h"
#include "platform/path.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

bool HoldsProgram(const Path& folder) {
  const Path canonical = Canonical(folder), program = Canonical(ProgramFolder());
  return IsSameOrBelow(program, canonical) && !IsSameOrBelow(canonical, program);
}

// A link is judged, and cleaned, where it leads; what does not exist stays what it is.
Path ReallyAt(const Path& folder) {
  const Path really = FinalPath(folder);
  return really.IsEmpty() ? folder : really;
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

// The folders are looked up and asked for only where the texts leave a question: there are dozens.
TempFolderFacts FindTempFolderFacts() {
  TempFolderFacts facts;
  facts.configured = EnvironmentText(Wide<"TMP">());
  if (facts.configured.empty()) facts.configured = EnvironmentText(Wide<"TEMP">());
  facts.reported = AppendBackslash(GetTempDir());
  facts.folder = ReallyAt(FullPath(facts.reported));
  if (RefusalByName(facts) != Why::Gone || facts.folder.IsEmpty() || facts.folder.IsRoot()) return facts;
  const std::vector<Path> shared = SharedFolders();
  std::vector<Path> keep = KeptFolders(shared);
  if (!HoldsProgram(facts.folder)) keep.push_back(ProgramFolder());
  static_cast<FolderFacts&>(facts) = FindFolderFacts(facts.folder, keep);
  facts.liesInShared = LiesInShared(facts.folder, facts, shared);
  return facts;
}

}  // namespace cleaners
