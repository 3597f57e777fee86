#include "cleaners/temp_guard.h"

#include <algorithm>

#include "platform/path_text.h"
#include "platform/text_value.h"

namespace {

// Letters beyond ASCII change their case by the system's own tables: any two of them count as equal here, which at worst
// refuses a folder that could be cleaned.
std::string Folded(std::string_view path) {
  std::string folded(path);
  for (char& c : folded)
    if (static_cast<unsigned char>(c) >= 0x80) c = '\x80';
  return folded;
}

// Windows 9x reports the current folder when the folder that a variable names is missing.
bool IsTheNamedFolder(const TempFolderFacts& facts) {
  return EqualIgnoringCase(AppendBackslash(Trim(facts.configured)), Trim(facts.reported));
}

}  // namespace

bool MayCleanTempFolder(const TempFolderFacts& facts) {
  const std::string name = UpperCase(Trim(facts.reported));
  if (name == "C:\\WINDOWS\\" || name == "C:\\WINNT\\") return false;
  if (!IsAbsolutePath(Trim(facts.configured)) || !IsTheNamedFolder(facts)) return false;
  if (facts.reported.find_first_of("*?") != std::string::npos) return false;  // what became of the characters not held
  if (!IsAbsolutePath(facts.canonical) || IsRootPath(facts.canonical) || facts.isLink || facts.leadsToKept) return false;
  return std::none_of(facts.keep.begin(), facts.keep.end(), [&facts](const std::string& folder) {
    return !folder.empty() && IsSameOrBelow(Folded(folder), Folded(facts.canonical));
  });
}
