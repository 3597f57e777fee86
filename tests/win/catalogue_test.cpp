#include "erase/catalogue.h"

#include <gtest/gtest.h>

#include <set>

#include "expected_items.h"

using namespace erase;
using namespace settings;

namespace {

void ExpectRow(const EraseItem& item, const ExpectedItem& expected, const std::string& where) {
  EXPECT_EQ(NameOf(item.array, item.index), NameOf(expected.array, expected.index)) << where;
  EXPECT_STREQ(SchemaRow(item.flag).key, expected.key) << where;
  EXPECT_STREQ(SchemaRow(item.flag).section, "CleanSettings") << where;
  EXPECT_STREQ(item.caption, expected.caption) << where;
  EXPECT_EQ(item.runs, expected.runs) << where;
  EXPECT_STREQ(item.logLine, expected.logLine) << where;
  EXPECT_EQ(NameOf(item.cleaner), NameOf(expected.cleaner)) << where;
  EXPECT_STREQ(item.secondLogLine, expected.secondLogLine) << where;
}

}  // namespace

TEST(Catalogue, HoldsTheItemsInTheOrderOfARunAndThoseThatNeverRunAfterThem) {
  ASSERT_EQ(kCatalogue.size(), kExpectedItems.size());
  for (std::size_t i = 0; i < kExpectedItems.size(); ++i)
    ExpectRow(kCatalogue[i], kExpectedItems[i], "row " + std::to_string(i + 1));
}

TEST(Catalogue, HasEveryBoxAndEveryFlagOnce) {
  std::set<std::string> boxes;
  std::set<Setting> flags;
  for (const EraseItem& item : kCatalogue) {
    EXPECT_TRUE(boxes.insert(NameOf(item.array, item.index)).second) << NameOf(item.array, item.index) << " stands twice";
    EXPECT_TRUE(flags.insert(item.flag).second) << SchemaRow(item.flag).key << " stands twice";
    EXPECT_LT(static_cast<std::size_t>(item.flag), kItemFlagCount) << SchemaRow(item.flag).key << " is no item flag";
  }
  EXPECT_EQ(boxes.size(), kExpectedItems.size());
}

TEST(FindItem, FindsTheItemOfEveryBox) {
  for (std::size_t array = 0; array < kBoxCounts.size(); ++array) {
    EXPECT_EQ(kBoxCounts[array], ExpectedBoxCount(static_cast<BoxArray>(array))) << NameOf(static_cast<BoxArray>(array), 0);
    for (int index = 0; index < kBoxCounts[array]; ++index) {
      const EraseItem* item = FindItem(static_cast<BoxArray>(array), index);
      ASSERT_NE(item, nullptr) << NameOf(static_cast<BoxArray>(array), index);
      EXPECT_EQ(static_cast<std::size_t>(item->array), array) << NameOf(static_cast<BoxArray>(array), index);
      EXPECT_EQ(item->index, index) << NameOf(static_cast<BoxArray>(array), index);
    }
  }
}

TEST(FindItem, IsNullOutsideTheArray) {
  for (std::size_t array = 0; array < kBoxCounts.size(); ++array)
    for (const int index : {-1, -100, kBoxCounts[array], kBoxCounts[array] + 1, 1000})
      EXPECT_EQ(FindItem(static_cast<BoxArray>(array), index), nullptr) << NameOf(static_cast<BoxArray>(array), index);
}
