#include "cleaners/listed_names.h"

#include <algorithm>

namespace cleaners {
using namespace platform;

bool IsListed(const std::vector<WideText>& names, WideView name) {
  return std::find(names.begin(), names.end(), Trim(name)) != names.end();
}

}  // namespace cleaners
