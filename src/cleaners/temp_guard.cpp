#include "cleaners/temp_guard.h"

#include <algorithm>

#include "platform/path_text.h"
#include "platform/text_value.h"

bool MayCleanTempFolder(const TempFolderFacts& facts) {
  const std::string name = UpperCase(Trim(facts.reported));
  if (name == "C:\\WINDOWS\\" || name == "C:\\WINNT\\") return false;
  if (!IsAbsolutePath(Trim(facts.configured))) return false;
  if (!IsAbsolutePath(facts.canonical) || IsRootPath(facts.canonical) || facts.isLink) return false;
  return std::none_of(facts.keep.begin(), facts.keep.end(), [&facts](const std::string& folder) {
    return !folder.empty() && IsSameOrBelow(folder, facts.canonical);
  });
}
