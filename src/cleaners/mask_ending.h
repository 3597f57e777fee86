// Which of the names that a mask lists are meant by it.
#pragma once

#include <string_view>

namespace cleaners {

// A mask also matches short names, where "x.chkdsk" reads "X.CHK": the name itself has to have the mask's ending. True for
// a mask without an ending, or with a wildcard in it. Case is ignored.
bool IsMeantByMask(std::string_view name, std::string_view mask);

}  // namespace cleaners
