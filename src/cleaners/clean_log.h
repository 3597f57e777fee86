// The cleaners' log hook. It deliberately records nothing; the visible lines of a run are written by the run itself.
#pragma once

#include <string>

namespace cleaners {

using CleanLog = void (*)(const std::string& text1, const std::string& text2);

inline void RecordNothing(const std::string&, const std::string&) {}

inline CleanLog LogCleanResult = &RecordNothing;

// Now, as the long date, " @ " and the long time of the user's locale.
std::string ResultStamp();

}  // namespace cleaners
