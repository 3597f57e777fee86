#include "cleaners/folder_guard.h"

#include <algorithm>

namespace cleaners {
using namespace platform;

bool MayClearFolder(const FolderFacts& facts) {
  if (facts.canonical.IsEmpty() || facts.canonical.IsRoot()) return false;
  if (facts.isLink || facts.isVolume || facts.leadsToKept) return false;
  return std::none_of(facts.keep.begin(), facts.keep.end(),
                      [&facts](const Path& folder) { return IsSameOrBelow(folder, facts.canonical); });
}

}  // namespace cleaners
