#include "platform/key_tree.h"

#include <utility>
#include <vector>

#include "platform/handles.h"
#include "platform/plain_key.h"
#include "platform/system_functions.h"
#include "platform/told_of_files.h"

namespace platform {

namespace {

constexpr REGSAM kToDelete = DELETE | KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE;

// A key that is being emptied, from its last subkey to its first. So no deletion moves one that is still to come, and keys
// that somebody adds meanwhile make no walk without an end.
struct Level {
  UniqueKey key;
  DWORD left = 0;
  DWORD values = 0;
};

void Take(UniqueKey key, Level& level) {
  level.key = std::move(key);
  ::RegQueryInfoKeyA(level.key.get(), nullptr, nullptr, nullptr, &level.left, nullptr, nullptr, &level.values, nullptr,
                     nullptr, nullptr, nullptr);
}

LONG Open(HKEY parent, const wchar_t* name, Level& level) {
  HKEY opened = nullptr;
  // The link itself and not what it leads to; such a key has no subkeys.
  const LONG status = late::RegOpenKeyExWide(parent, name, REG_OPTION_OPEN_LINK, kToDelete, &opened);
  if (status == ERROR_SUCCESS) Take(UniqueKey(opened), level);
  return status;
}

void TellKeysErased(const KeyContents& keys) {
  TellErased(Trace::Key, keys.keys);
  TellErased(Trace::Value, keys.values);
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
      if (late::NtDeleteKey(level.key.get()) < 0)
        note(ERROR_ACCESS_DENIED);
      else
        TellKeysErased({1, static_cast<int>(level.values)});
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

LONG DeleteInOneStep(HKEY root, const char* path) {
  const KeyContents contents = Listening == nullptr ? KeyContents() : ContentsOfKey(root, path);
  const LONG status = late::SHDeleteKey ? static_cast<LONG>(late::SHDeleteKey(root, path))
                                        : ::RegDeleteKeyA(root, path);  // which takes the subkeys along
  if (status == ERROR_SUCCESS) TellKeysErased(contents);
  return status;
}

}  // namespace

LONG DeleteKeyTree(HKEY root, const char* path) {
  if (path == nullptr || *path == '\0') return ERROR_INVALID_PARAMETER;
  UniqueKey key;
  LONG status = OpenKeyItself(root, path, kToDelete, key);
  if (status == ERROR_SUCCESS) {
    Level top;
    Take(std::move(key), top);
    status = DeleteFrom(std::move(top));
  } else if (status == ERROR_CALL_NOT_IMPLEMENTED) {
    status = DeleteInOneStep(root, path);
  }
  const auto reason = static_cast<DWORD>(status);
  if (status != ERROR_SUCCESS) TellStayed(path, WhyOf(reason), reason);
  return status;
}

KeyContents ContentsOfKey(HKEY root, const char* path) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExA(root, path, 0, KEY_READ, &opened) != ERROR_SUCCESS) return {};
  Level level;
  Take(UniqueKey(opened), level);
  return {static_cast<int>(level.left) + 1, static_cast<int>(level.values)};
}

}  // namespace platform
