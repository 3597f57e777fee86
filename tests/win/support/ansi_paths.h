// Paths as the tests write them: in texts of the ANSI code page.
#pragma once

#include <string>
#include <vector>

#include "platform/path.h"
#include "platform/wide_system.h"

using namespace platform;

// Empty for a text that is no full path, as for one of a variable or the registry.
inline Path At(const std::string& text) { return FullPath(Widen(text)); }

inline std::string TextOf(WideView text) { return Narrow(text); }
inline std::string TextOf(const Path& path) { return Narrow(path.Shown()); }

inline std::vector<std::string> TextsOf(const std::vector<WideText>& texts) {
  std::vector<std::string> ansi;
  for (const WideText& text : texts) ansi.push_back(Narrow(text));
  return ansi;
}

namespace platform {
inline void PrintTo(const Path& path, std::ostream* out) { *out << '"' << Narrow(path.Native()) << '"'; }
}  // namespace platform
