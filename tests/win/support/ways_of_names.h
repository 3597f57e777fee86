// How names reach the system.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

// For INSTANTIATE_TEST_SUITE_P: where the test's Windows is a 9x the ANSI names, on the NT family the wide ones. As the
// youngest, which has all else that either has, every test runs both ways.
inline std::vector<const char*> WaysOfNames() {
  const char* const set = std::getenv("QUELLIX_WINDOWS_VERSION");
  const std::string version = set != nullptr ? set : "";
  if (version == "win95" || version == "win98") return {"ansi"};
  if (version == "nt40" || version == "win2k") return {"wide"};
  return {"wide", "ansi"};
}

inline std::string NameOfWay(const testing::TestParamInfo<const char*>& way) { return way.param; }
