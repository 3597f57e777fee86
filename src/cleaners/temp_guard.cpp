#include "cleaners/temp_guard.h"

#include "platform/path.h"

namespace cleaners {
using namespace platform;

namespace {

// Windows 9x reports the current folder when the folder that a variable names is missing.
bool IsTheNamedFolder(const TempFolderFacts& facts) {
  return EqualIgnoringCase(AppendBackslash(Trim(facts.configured)), Trim(facts.reported));
}

bool IsCalledTemp(WideView name) {
  return EqualIgnoringCase(name, Wide<"TEMP">()) || EqualIgnoringCase(name, Wide<"TMP">());
}

}  // namespace

bool MayBeTempFolder(const TempFolderFacts& facts) {
  const WideText name = Trim(facts.reported);
  if (EqualIgnoringCase(name, Wide<"C:\\WINDOWS\\">()) || EqualIgnoringCase(name, Wide<"C:\\WINNT\\">())) return false;
  if (!IsAbsolutePath(Trim(facts.configured)) || !IsTheNamedFolder(facts)) return false;
  return facts.reported.find_first_of(Wide<"*?">()) == WideText::npos;
}

bool MayClearTempFolder(const TempFolderFacts& facts) {
  if (!MayBeTempFolder(facts)) return false;
  if (facts.liesInShared && !IsCalledTemp(facts.folder.Name())) return false;
  return MayClearFolder(facts);
}

}  // namespace cleaners
