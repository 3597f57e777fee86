#include "platform/wide_text.h"

#include "platform/wide_system.h"

namespace platform {

WideText Trim(WideView text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == WideView::npos) return {};
  return WideText(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

bool EqualIgnoringCase(WideView one, WideView other) {
  return one.size() == other.size() && UpperCase(one) == UpperCase(other);
}

}  // namespace platform
