#include "platform/path_text.h"

#include <gtest/gtest.h>

TEST(AppendBackslash, AddsOneToADriveAndLeavesARootAsItIs) {
  EXPECT_EQ(AppendBackslash("C:"), "C:\\");
  EXPECT_EQ(AppendBackslash("C:\\"), "C:\\");
  EXPECT_EQ(AppendBackslash("C:\\Temp"), "C:\\Temp\\");
  EXPECT_EQ(AppendBackslash(""), "\\");
}
