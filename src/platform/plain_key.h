// Opening registry keys without being led elsewhere: a key may be a link to any other one, and whoever may write to a user's
// keys can plant one for a program with more rights. Windows 9x has no links.
#pragma once

#include <string_view>

#include "platform/handles.h"

namespace platform {

// The key below `root`, for `access` and for reading its values, where neither it nor one on the way is a link. `key` is
// unchanged on failure; ERROR_CANT_RESOLVE_FILENAME tells of a link.
[[nodiscard]] LONG OpenPlainKey(HKEY root, std::string_view path, REGSAM access, UniqueKey& key);

// The same, and makes the key where there is none.
[[nodiscard]] LONG MakePlainKey(HKEY root, std::string_view path, REGSAM access, UniqueKey& key);

// The key as OpenPlainKey finds it, and where the key is a link, that link itself. ERROR_CALL_NOT_IMPLEMENTED on Windows 9x.
[[nodiscard]] LONG OpenKeyItself(HKEY root, std::string_view path, REGSAM access, UniqueKey& key);

}  // namespace platform
