#include "cleaners/recycle_bin_root.h"

#include <gtest/gtest.h>

using namespace cleaners;

TEST(RecycleBinRoot, IsADriveWithItsRoot) {
  const struct {
    const char* given;
    const char* root;
  } rows[] = {
      {"", ""},      {"D", "D:\\"},          {"E", "E:\\"},     {"D:", "D:\\"},  {"D:\\", "D:\\"},
      {"d", "d:\\"}, {"D:x", "D:\\"},        {"D/", "D:\\"},    {"D:/", "D:\\"}, {"DE:\\", "D:\\"},
      {" ", " :\\"}, {"D:\\Sub", "D:\\Sub"}, {"Drive", "D:\\"},
  };
  for (const auto& row : rows) EXPECT_EQ(RecycleBinRoot(row.given), row.root) << "given [" << row.given << "]";
}

TEST(RecycleBinFlags, AddUpToWhatThePlatformTakes) {
  for (unsigned long flags = 0; flags < 8; ++flags)
    EXPECT_EQ(RecycleBinFlags((flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0), flags);
}
