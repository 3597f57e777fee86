#include "platform/plain_text.h"

#include <cstddef>

namespace platform {

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return upper;
}

bool EqualIgnoringCase(std::string_view one, std::string_view other) {
  return one.size() == other.size() && UpperCase(one) == UpperCase(other);
}

}  // namespace platform
