// The arguments of emptying a recycle bin.
#pragma once

#include <string>

namespace cleaners {

// "D" and "D:" become "D:\"; an empty text, which means every drive, and a text with ":\" after its first character stay.
inline std::string RecycleBinRoot(const std::string& driveRoot) {
  if (driveRoot.empty() || driveRoot.compare(1, 2, ":\\") == 0) return driveRoot;
  return driveRoot.substr(0, 1) + ":\\";
}

// SHERB_NOCONFIRMATION 1, SHERB_NOPROGRESSUI 2, SHERB_NOSOUND 4.
inline unsigned long RecycleBinFlags(bool noConfirmation, bool noProgress, bool noSound) {
  return (noConfirmation ? 1u : 0u) + (noProgress ? 2u : 0u) + (noSound ? 4u : 0u);
}

}  // namespace cleaners
