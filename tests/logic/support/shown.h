// Paths as the tests write them and as their messages show them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/path.h"

namespace platform {

inline void PrintTo(const Path& path, std::ostream* out) { *out << testing::PrintToString(path.Shown()); }

inline std::vector<WideText> Shown(const std::vector<Path>& paths) {
  std::vector<WideText> texts;
  for (const Path& path : paths) texts.push_back(path.Shown());
  return texts;
}

}  // namespace platform
