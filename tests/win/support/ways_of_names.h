// How names reach the system.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

// For INSTANTIATE_TEST_SUITE_P: the ANSI names where the test's Windows is a 9x, the wide ones on the NT family, both where
// a test program is started by hand. Nothing else that the walks ask depends on what Windows calls itself.
inline std::vector<const char*> WaysOfNames() {
  const char* const version = std::getenv("QUELLIX_WINDOWS_VERSION");
  if (version == nullptr) return {"wide", "ansi"};
  return {std::string(version).starts_with("win9") ? "ansi" : "wide"};
}

inline std::string NameOfWay(const testing::TestParamInfo<const char*>& way) { return way.param; }
