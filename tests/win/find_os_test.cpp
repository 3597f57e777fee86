#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

#include "platform/Reg32.h"

using namespace platform;

TEST(FindOS, NamesTheRunningSystem) {
  const char* version = std::getenv("QUELLIX_WINDOWS_VERSION");
  ASSERT_NE(version, nullptr) << "the test is started by its runner, which sets the version";
  const std::map<std::string, std::string> names = {
      {"win95", "Microsoft Windows 95"},
      {"win98", "Microsoft Windows 98"},
      {"nt40", "Microsoft Windows NT"},
      {"win2k", "Microsoft Windows 2000"},
      {"winxp", "Microsoft Windows XP Build 2600"},
  };
  EXPECT_EQ(FindOS(), names.at(version));
}
