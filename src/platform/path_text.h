// What can be said of a path from its text alone. Paths are ANSI texts; no file is looked at.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The path with exactly one "\" after it: unchanged when it ends in one. An empty path becomes "\".
std::string AppendBackslash(std::string_view path);

// A drive with its root ("C:\x") or a share ("\\server\share"). Device paths ("\\.\", "\\?\") are none of these.
bool IsAbsolutePath(std::string_view path);

// The root of a drive or of a share, with or without "\" behind it. Of a path that is not absolute: false.
bool IsRootPath(std::string_view path);

// True when `inner` is `outer` or lies below it. Both absolute, of one spelling (case aside); either may end in "\".
bool IsSameOrBelow(std::string_view inner, std::string_view outer);

}  // namespace platform
