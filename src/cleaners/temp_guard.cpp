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

// The first of the folders to keep is Windows itself.
bool HoldsWindows(const TempFolderFacts& facts) {
  return !facts.keep.empty() && IsSameOrBelow(facts.keep.front(), facts.canonical);
}

}  // namespace

Why RefusalByName(const TempFolderFacts& facts) {
  const WideText name = Trim(facts.reported);
  if (EqualIgnoringCase(name, Wide<"C:\\WINDOWS\\">()) || EqualIgnoringCase(name, Wide<"C:\\WINNT\\">()))
    return Why::RefusedWindows;
  if (!IsAbsolutePath(Trim(facts.configured)) || !IsTheNamedFolder(facts)) return Why::RefusedNotNamed;
  return facts.reported.find_first_of(Wide<"*?">()) == WideText::npos ? Why::Gone : Why::RefusedNoFolder;
}

Why RefusalOfTempFolder(const TempFolderFacts& facts) {
  if (const Why byName = RefusalByName(facts); byName != Why::Gone) return byName;
  if (facts.liesInShared && !IsCalledTemp(facts.folder.Name())) return Why::RefusedShared;
  const FolderRefusal refusal = RefusalOf(facts);
  return refusal == FolderRefusal::Kept && HoldsWindows(facts) ? Why::RefusedWindows : WhyOf(refusal);
}

}  // namespace cleaners
