// Whether a folder may be emptied or removed: the one rule between a wrong path and a lost disk.
#pragma once

#include <string>
#include <vector>

namespace cleaners {

struct FolderFacts {
  std::string canonical;          // in full and, as far as it exists, in short names; to be compared with `keep`
  bool isLink = false;            // the folder itself is a junction or symbolic link
  bool leadsToKept = false;       // it is one of `keep` or one above it by a path that reads differently
  std::vector<std::string> keep;  // folders that must not be it nor lie in it, in the same spelling as `canonical`
};

// False for a relative path, a root, a link, and a folder that is or holds one of `keep`.
bool MayEmptyFolder(const FolderFacts& facts);

}  // namespace cleaners
