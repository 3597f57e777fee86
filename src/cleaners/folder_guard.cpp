#include "cleaners/folder_guard.h"

#include <algorithm>

namespace cleaners {
using namespace platform;

FolderRefusal RefusalOf(const FolderFacts& facts) {
  if (facts.canonical.IsEmpty()) return FolderRefusal::NoFolder;
  if (facts.canonical.IsRoot() || facts.isVolume) return FolderRefusal::Root;
  if (facts.isLink) return FolderRefusal::Link;
  const bool holdsKept = std::any_of(facts.keep.begin(), facts.keep.end(),
                                     [&facts](const Path& folder) { return IsSameOrBelow(folder, facts.canonical); });
  return facts.leadsToKept || holdsKept ? FolderRefusal::Kept : FolderRefusal::None;
}

}  // namespace cleaners
