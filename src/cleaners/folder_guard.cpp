#include "cleaners/folder_guard.h"

#include <algorithm>
#include <string_view>

#include "platform/path_text.h"

namespace cleaners {
using namespace platform;

namespace {

// Letters beyond ASCII change their case by the system's own tables: any two of them count as equal here, which at worst
// refuses a folder that could be emptied.
std::string Folded(std::string_view path) {
  std::string folded(path);
  for (char& c : folded)
    if (static_cast<unsigned char>(c) >= 0x80) c = '\x80';
  return folded;
}

}  // namespace

bool MayEmptyFolder(const FolderFacts& facts) {
  if (!IsAbsolutePath(facts.canonical) || IsRootPath(facts.canonical) || facts.isLink || facts.leadsToKept) return false;
  return std::none_of(facts.keep.begin(), facts.keep.end(), [&facts](const std::string& folder) {
    return !folder.empty() && IsSameOrBelow(Folded(folder), Folded(facts.canonical));
  });
}

}  // namespace cleaners
