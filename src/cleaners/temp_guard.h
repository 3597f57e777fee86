// Whether the folder that the system reports as TEMP may be cleaned: the one rule between a wrong variable and a lost disk.
#pragma once

#include <string>
#include <vector>

struct TempFolderFacts {
  std::string configured;         // what the variables say (TMP before TEMP), empty when neither is set
  std::string reported;           // what the system made of it, as AppendBackslash leaves it
  std::string canonical;          // `reported` in full and, as far as it exists, in short names; to be compared with `keep`
  bool isLink = false;            // the folder itself is a junction or symbolic link
  bool leadsToKept = false;       // it is one of `keep` or one above it by a path that reads differently
  std::vector<std::string> keep;  // folders that must not be it nor lie in it, in the same spelling as `canonical`
};

// False for the Windows folders by name, for a folder that is not the one that a variable names (without a variable, or
// where its folder is missing, the system falls back to the profile or the current folder), a relative path, one with
// characters outside the code page, a root, a link, and a folder that is or holds one of `keep`.
bool MayCleanTempFolder(const TempFolderFacts& facts);
