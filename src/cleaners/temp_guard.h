// Whether the folder that the system reports as TEMP may be cleaned: what folder_guard.h asks of every folder, and more,
// since nobody chose this one.
#pragma once

#include "cleaners/folder_guard.h"

namespace cleaners {

struct TempFolderFacts : FolderFacts {
  WideText configured;  // what the variables hold (TMP before TEMP), empty when neither is set
  WideText reported;    // what the system made of it, as AppendBackslash leaves it; the base tells of this folder
};

// False for the Windows folders by name, for a folder that is not the one that a variable names (without a variable, or
// where its folder is missing, the system falls back to the profile or the current folder), one with a wildcard in its name,
// and one that MayClearFolder refuses.
bool MayClearTempFolder(const TempFolderFacts& facts);

}  // namespace cleaners
