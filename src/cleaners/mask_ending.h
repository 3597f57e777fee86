// Which of the names that a mask lists it is for.
#pragma once

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

// A mask also matches short names, where "x.chkdsk" reads "X.CHK": the name itself has to have the mask's ending. True for
// a mask without an ending, or with a wildcard in it. Case is ignored.
bool IsMeantByMask(WideView name, WideView mask);

}  // namespace cleaners
