// The two fill characters of an overwrite pass.
#pragma once

#include <string>

namespace cleaners {

// The last character of the decimal text of (whole days of the clock) + (seconds since midnight) - (a random number of
// [0,1)). `clockDays` is the date and time as days with a fraction.
char FillCharacter(double clockDays, double secondsSinceMidnight, double random);

struct FillBlocks {
  std::string a;  // 1024 copies each
  std::string b;
};

FillBlocks MakeFillBlocks(char a, char b);

}  // namespace cleaners
