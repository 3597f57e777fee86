// The label that names the key which brings the windows back. It has one blank after the colon from the "Advance
// Settings" button and two from everywhere else; the two tell by which way the panel was reached.
#pragma once

#include <string>

namespace automation {

inline std::string RestoreLabelFromNavigation(const std::string& bossKey) { return "Restore : Shift + " + bossKey; }
inline std::string RestoreLabel(const std::string& bossKey) { return "Restore :  Shift + " + bossKey; }

}  // namespace automation
