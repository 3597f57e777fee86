#include "cleaners/temp_guard.h"

#include "platform/path_text.h"
#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

namespace {

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
  return MayEmptyFolder(facts);
}

}  // namespace cleaners
