#include "cleaners/mask_ending.h"

#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

bool IsMeantByMask(std::string_view name, std::string_view mask) {
  const std::size_t dot = mask.rfind('.');
  if (dot == std::string_view::npos) return true;
  const std::string_view ending = mask.substr(dot);
  if (ending.find_first_of("*?\\") != std::string_view::npos) return true;
  return name.size() >= ending.size() && EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

}  // namespace cleaners
