#include "shred/folder_chain.h"

#include <algorithm>

namespace shred {
using namespace platform;

std::vector<Path> FolderChain(const Path& folder) {
  std::vector<Path> chain;
  for (Path level = folder; !level.IsEmpty() && !level.IsRoot(); level.RemoveName()) chain.push_back(level);
  std::reverse(chain.begin(), chain.end());
  return chain;
}

}  // namespace shred
