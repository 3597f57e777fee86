// Whether a folder may be emptied or removed: the one rule between a wrong path and a lost disk.
#pragma once

#include <vector>

#include "platform/path.h"
#include "platform/tally.h"

namespace cleaners {
using namespace platform;

struct FolderFacts {
  Path canonical;            // in short names, as far as it exists; to be compared with `keep`
  bool isLink = false;       // the folder itself is a junction or symbolic link
  bool isVolume = false;     // the uppermost folder of a volume, whatever its path reads like
  bool leadsToKept = false;  // it is one of `keep` or one above it by a path that reads differently
  std::vector<Path> keep;    // folders that must not be it nor lie in it, in the same spelling as `canonical`
};

// Why a folder may not be: it is none, a root, a link, or is or holds one of `keep`.
enum class FolderRefusal { None, NoFolder, Root, Link, Kept };
FolderRefusal RefusalOf(const FolderFacts& facts);

// The same for the tally of a run; Why::Gone for None.
Why WhyOf(FolderRefusal refusal);

inline bool MayClearFolder(const FolderFacts& facts) { return RefusalOf(facts) == FolderRefusal::None; }

}  // namespace cleaners
