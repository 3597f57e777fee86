#include "platform/key_tree.h"

#include <vector>

#include "platform/handles.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

// A key that is being emptied, from its last subkey to its first. So no deletion moves one that is still to come, and keys
// that somebody adds meanwhile make no walk without an end.
struct Level {
  UniqueKey key;
  DWORD left = 0;
};

LONG Open(HKEY parent, const wchar_t* name, Level& level) {
  HKEY opened = nullptr;
  // The link itself and not what it leads to; such a key has no subkeys.
  const LONG status = late::RegOpenKeyExWide(parent, name, REG_OPTION_OPEN_LINK, MAXIMUM_ALLOWED, &opened);
  if (status != ERROR_SUCCESS) return status;
  level.key.reset(opened);
  ::RegQueryInfoKeyA(opened, nullptr, nullptr, nullptr, &level.left, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
  return ERROR_SUCCESS;
}

// Goes on after a failure and gives the first one.
LONG DeleteFrom(Level top) {
  LONG failure = ERROR_SUCCESS;
  const auto note = [&failure](LONG status) {
    if (failure == ERROR_SUCCESS) failure = status;
  };
  std::vector<Level> levels;  // not by calls of itself: keys can be nested deeper than a stack
  levels.push_back(std::move(top));
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.left == 0) {
      // By its handle: a name could lead somewhere else by now.
      if (late::NtDeleteKey(level.key.get()) < 0) note(ERROR_ACCESS_DENIED);
      levels.pop_back();
      continue;
    }
    wchar_t name[256];  // one more than the longest
    DWORD length = 256;
    if (late::RegEnumKeyExWide(level.key.get(), --level.left, name, &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
      continue;
    Level below;
    const LONG status = Open(level.key.get(), name, below);
    note(status);
    if (status == ERROR_SUCCESS) levels.push_back(std::move(below));
  }
  return failure;
}

}  // namespace

LONG DeleteKeyTree(HKEY root, const char* path) {
  if (path == nullptr || *path == '\0') return ERROR_INVALID_PARAMETER;
  if (late::SHDeleteKey) return static_cast<LONG>(late::SHDeleteKey(root, path));
  Level top;
  const LONG status = Open(root, Widen(path).c_str(), top);
  // Windows 9x, where the plain function takes the subkeys along.
  if (status == ERROR_CALL_NOT_IMPLEMENTED) return ::RegDeleteKeyA(root, path);
  return status == ERROR_SUCCESS ? DeleteFrom(std::move(top)) : status;
}

}  // namespace platform
