#include "platform/path_text.h"

#include <algorithm>

#include "platform/plain_text.h"

namespace platform {

namespace {

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsShare(std::string_view path) {
  if (path.size() < 5 || path.substr(0, 2) != "\\\\" || path[2] == '.' || path[2] == '?' || path[2] == '\\') return false;
  const std::size_t name = path.find('\\', 2);
  return name != std::string_view::npos && name + 1 < path.size() && path[name + 1] != '\\';
}

}  // namespace

std::string AppendBackslash(std::string_view path) {
  std::string with(path);
  if (with.empty() || with.back() != '\\') with += '\\';
  return with;
}

bool IsAbsolutePath(std::string_view path) {
  if (path.size() >= 3 && IsDriveLetter(path[0]) && path[1] == ':' && path[2] == '\\') return true;
  return IsShare(path);
}

bool IsRootPath(std::string_view path) {
  if (!IsAbsolutePath(path)) return false;
  while (!path.empty() && path.back() == '\\') path.remove_suffix(1);
  if (path.size() == 2) return true;
  return path[0] == '\\' && std::count(path.begin(), path.end(), '\\') <= 3;
}

bool IsSameOrBelow(std::string_view inner, std::string_view outer) {
  const std::string in = UpperCase(AppendBackslash(inner));
  const std::string out = UpperCase(AppendBackslash(outer));
  return in.compare(0, out.size(), out) == 0;
}

}  // namespace platform
