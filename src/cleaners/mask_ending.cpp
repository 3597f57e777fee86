#include "cleaners/mask_ending.h"

namespace cleaners {
using namespace platform;

bool IsMeantByMask(WideView name, WideView mask) {
  const std::size_t dot = mask.rfind('.');
  if (dot == WideView::npos) return true;
  const WideView ending = mask.substr(dot);
  if (ending.find_first_of(Wide<"*?\\">()) != WideView::npos) return true;
  return name.size() >= ending.size() && EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

}  // namespace cleaners
