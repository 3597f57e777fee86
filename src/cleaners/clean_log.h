// The cleaners' log hook. It deliberately records nothing; the visible lines of a run are written by the run itself.
#pragma once

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

using CleanLog = void (*)(WideView text1, WideView text2);

inline void RecordNothing(WideView, WideView) {}

inline CleanLog LogCleanResult = &RecordNothing;

// Now, as the long date, " @ " and the long time of the user's locale.
WideText ResultStamp();

}  // namespace cleaners
