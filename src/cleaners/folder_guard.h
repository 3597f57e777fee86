// Whether a folder may be emptied or removed: the one rule between a wrong path and a lost disk.
#pragma once

#include <cstdint>
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

// Why a folder may not be: it is none, a root, a link, or is or holds one of `keep`. The same reasons as in the tally of a
// run.
enum class FolderRefusal : std::uint8_t {
  None = static_cast<std::uint8_t>(Why::Gone),
  NoFolder = static_cast<std::uint8_t>(Why::RefusedNoFolder),
  Root = static_cast<std::uint8_t>(Why::RefusedRoot),
  Link = static_cast<std::uint8_t>(Why::RefusedLink),
  Kept = static_cast<std::uint8_t>(Why::RefusedKept),
};
constexpr Why WhyOf(FolderRefusal refusal) { return static_cast<Why>(refusal); }
FolderRefusal RefusalOf(const FolderFacts& facts);

inline bool MayClearFolder(const FolderFacts& facts) { return RefusalOf(facts) == FolderRefusal::None; }

}  // namespace cleaners
