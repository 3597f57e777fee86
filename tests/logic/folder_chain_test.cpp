#include "shred/folder_chain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shown.h"

using namespace platform;
using namespace shred;

TEST(FolderChain, NamesEveryLevelOutermostFirst) {
  const struct {
    const char16_t* path;
    std::vector<WideText> chain;
  } rows[] = {
      {u"C:\\a\\b", {u"C:\\a", u"C:\\a\\b"}},
      {u"C:\\a", {u"C:\\a"}},
      {u"C:\\one two\\three.four\\5", {u"C:\\one two", u"C:\\one two\\three.four", u"C:\\one two\\three.four\\5"}},
      {u"\\\\server\\share\\a\\b", {u"\\\\server\\share\\a", u"\\\\server\\share\\a\\b"}},
      {u"C:\\", {}},
      {u"\\\\server\\share", {}},
      {u"", {}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Shown(FolderChain(FullPath(row.path))), row.chain) << testing::PrintToString(row.path);
}

TEST(FolderChain, ReachesAHundredLevelsDown) {
  WideText path = u"C:";
  for (int level = 0; level < 100; ++level) path += u"\\d";
  const std::vector<Path> chain = FolderChain(FullPath(path));
  ASSERT_EQ(chain.size(), 100u);
  EXPECT_EQ(chain.front().Shown(), u"C:\\d");
  EXPECT_EQ(chain.back().Shown(), path);
}
