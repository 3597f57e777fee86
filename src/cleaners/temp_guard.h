// Whether the folder that the system reports as TEMP may be cleaned: what folder_guard.h asks of every folder, and more,
// since nobody chose this one.
#pragma once

#include "cleaners/folder_guard.h"
#include "platform/tally.h"
#include "platform/wide_text.h"

namespace cleaners {

struct TempFolderFacts : FolderFacts {
  WideText configured;        // what the variables hold (TMP before TEMP), empty when neither is set
  WideText reported;          // what the system made of it, as AppendBackslash leaves it
  Path folder;                // where that really is, links followed: what is judged, and what is cleaned
  bool liesInShared = false;  // inside Windows, Program Files or a folder of all users
};

// Why a folder may not be; Why::Gone where it may. It may not: the Windows folders by name, a folder that is not the one
// that a variable names (without a variable, or where its folder is missing, the system falls back to the profile or the
// current folder), one with a wildcard in its name, one inside the folders that all share unless its own name is TEMP or TMP
// (a program without rights may set the variable of an administrator), and one that MayClearFolder refuses.
Why RefusalOfTempFolder(const TempFolderFacts& facts);
inline bool MayClearTempFolder(const TempFolderFacts& facts) { return RefusalOfTempFolder(facts) == Why::Gone; }

// What the texts tell alone: whatever else there is to know does not lift it.
Why RefusalByName(const TempFolderFacts& facts);

}  // namespace cleaners
