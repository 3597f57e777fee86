#include "shred/folder_chain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace shred;

TEST(DrivePart, EndsWithTheFirstColon) {
  const struct {
    const char* path;
    const char* drive;
  } rows[] = {
      {"C:\\a\\b", "C:"},
      {"C:", "C:"},
      {"c:a", "c:"},
      {":", ":"},
      {"", ""},
      {"a\\b", ""},
      {"\\\\s\\h\\a", ""},
      {"file:C:\\a", "file:"},
      {"C:\\a:stream", "C:"},
      {"a:b:c", "a:"},
  };
  for (const auto& row : rows) EXPECT_EQ(DrivePart(row.path), row.drive) << "[" << row.path << "]";
}

TEST(FolderChain, NamesEveryLevelOutermostFirst) {
  const struct {
    const char* path;
    std::vector<std::string> chain;
  } rows[] = {
      {"C:\\a\\b", {"C:\\a", "C:\\a\\b"}},
      {"C:\\a\\b\\", {"C:\\a", "C:\\a\\b"}},
      {"C:\\a", {"C:\\a"}},
      {"C:\\one two\\three.four\\5", {"C:\\one two", "C:\\one two\\three.four", "C:\\one two\\three.four\\5"}},
      {"C:\\", {}},
      {"C:", {}},
      {"", {}},
      {"\\", {}},
      {"C:a\\b", {"C:a", "C:a\\b"}},
      {"a\\b", {"a", "a\\b"}},
      {"\\a\\b", {"\\a", "\\a\\b"}},
  };
  for (const auto& row : rows)
    EXPECT_THAT(FolderChain(row.path), testing::ElementsAreArray(row.chain)) << "[" << row.path << "]";
}

TEST(FolderChain, ReachesAHundredLevelsDown) {
  std::string path = "C:";
  for (int level = 0; level < 100; ++level) path += "\\d";
  const std::vector<std::string> chain = FolderChain(path);
  ASSERT_EQ(chain.size(), 100u);
  EXPECT_EQ(chain.front(), "C:\\d");
  EXPECT_EQ(chain.back(), path);
}
