// Whether the folder that the system reports as TEMP may be cleaned: what folder_guard.h asks of every folder, and more,
// since nobody chose this one.
#pragma once

#include "cleaners/folder_guard.h"
#include "platform/wide_text.h"

namespace cleaners {

struct TempFolderFacts : FolderFacts {
  WideText configured;        // what the variables hold (TMP before TEMP), empty when neither is set
  WideText reported;          // what the system made of it, as AppendBackslash leaves it
  Path folder;                // where that really is, links followed: what is judged, and what is cleaned
  bool liesInShared = false;  // inside Windows, Program Files or a folder of all users
};

// What the texts tell alone: false wherever the next one is false whatever else there is to know.
bool MayBeTempFolder(const TempFolderFacts& facts);

// False for the Windows folders by name, for a folder that is not the one that a variable names (without a variable, or
// where its folder is missing, the system falls back to the profile or the current folder), one with a wildcard in its name,
// one inside the folders that all share unless its own name is TEMP or TMP (a program without rights may set the variable of
// an administrator), and one that MayClearFolder refuses.
bool MayClearTempFolder(const TempFolderFacts& facts);

}  // namespace cleaners
