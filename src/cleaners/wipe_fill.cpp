#include "cleaners/wipe_fill.h"

#include <cmath>

#include "platform/plain_text.h"
#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

char FillCharacter(double clockDays, double secondsSinceMidnight, double random) {
  return TextOf(std::floor(clockDays) + secondsSinceMidnight - random).back();
}

FillBlocks MakeFillBlocks(char a, char b) { return {std::string(1024, a), std::string(1024, b)}; }

}  // namespace cleaners
