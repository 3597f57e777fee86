#include "cleaners/listed_names.h"

#include <algorithm>

#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

bool IsListed(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), Trim(name)) != names.end();
}

}  // namespace cleaners
