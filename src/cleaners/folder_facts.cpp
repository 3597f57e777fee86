#include "cleaners/folder_facts.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "platform/final_path.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"

namespace cleaners {
using namespace platform;

namespace {

// With the folders that it lies in, each once.
void AppendWithParents(std::vector<Path>& folders, Path folder) {
  for (; !folder.IsEmpty(); folder.RemoveName()) {
    if (std::find(folders.begin(), folders.end(), folder) != folders.end()) return;
    folders.push_back(folder);
  }
}

bool IsOneOf(const std::vector<Path>& folders, const FolderIdentity& identity) {
  return std::any_of(folders.begin(), folders.end(),
                     [&identity](const Path& folder) { return NativeIdentity(folder) == identity; });
}

// Where a folder is, links followed; as it is named where the system tells nothing.
Path ReallyAt(const Path& folder) {
  const Path really = FinalPath(folder);
  return really.IsEmpty() ? folder : really;
}

Path InShortNames(const Path& folder) {
  const Path shortened = ShortForm(folder);
  return shortened.IsEmpty() ? folder : shortened;
}

}  // namespace

Path Canonical(const Path& folder) { return InShortNames(ReallyAt(folder)); }

FolderFacts FindFolderFacts(const Path& folder, const std::vector<Path>& keep) {
  FolderFacts facts;
  const DWORD attributes = NativeAttributes(folder);
  const Path really = FinalPath(folder);
  // What is there and cannot be followed could lead anywhere.
  if (attributes == INVALID_FILE_ATTRIBUTES || !really.IsEmpty()) facts.canonical = Canonical(folder);
  facts.isLink = IsLink(attributes);
  facts.isVolume = IsVolumeRoot(folder);
  // What the texts of two paths do not show: a link on the way, a drive letter or a share that means a folder.
  std::vector<Path> chains;
  for (const Path& kept : keep) {
    const Path place = ReallyAt(kept);
    facts.keep.push_back(InShortNames(place));
    AppendWithParents(chains, kept);
    AppendWithParents(chains, place);
  }
  const std::optional<FolderIdentity> identity = NativeIdentity(folder);
  facts.leadsToKept = identity && IsOneOf(chains, *identity);
  return facts;
}

FolderFacts FindFolderFacts(const Path& folder, Untold untold) {
  std::vector<Path> keep = KeptFolders(SharedFolders(untold), untold);
  keep.push_back(ProgramFolder());
  return FindFolderFacts(folder, keep);
}

bool LiesInShared(const Path& folder, const FolderFacts& facts, const std::vector<Path>& shared) {
  const auto end = facts.keep.begin() + static_cast<std::ptrdiff_t>(shared.size());
  const auto holdsIt = [&facts](const Path& one) { return IsSameOrBelow(facts.canonical, one); };
  if (std::any_of(facts.keep.begin(), end, holdsIt)) return true;
  std::vector<Path> chain;
  AppendWithParents(chain, folder);
  AppendWithParents(chain, ReallyAt(folder));
  std::vector<FolderIdentity> identities;  // asked for once: each opens a folder
  for (const Path& one : chain)
    if (const std::optional<FolderIdentity> identity = NativeIdentity(one)) identities.push_back(*identity);
  return std::any_of(shared.begin(), shared.end(), [&identities](const Path& one) {
    const std::optional<FolderIdentity> identity = NativeIdentity(one);
    return identity && std::find(identities.begin(), identities.end(), *identity) != identities.end();
  });
}

}  // namespace cleaners
