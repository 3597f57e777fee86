#include "erase/catalogue.h"

#include <gtest/gtest.h>

#include <set>

#include "cleaners/NetScapeEraser.h"
#include "cleaners/OperaClean.h"
#include "cleaners/locked_index.h"
#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleanItems.h"
#include "cleaners/modCleaning.h"
#include "expected_items.h"

using namespace erase;

namespace {

const EraseItem& ItemOf(BoxArray array, int index) {
  for (const EraseItem& item : Catalogue())
    if (item.array == array && item.index == index) return item;
  ADD_FAILURE() << NameOf(array, index) << " has no row";
  return Catalogue().front();
}

}  // namespace

TEST(Catalogue, HoldsTheExpectedItemsInTheOrderInWhichTheyRun) {
  ASSERT_EQ(Catalogue().size(), kExpectedItems.size());
  for (std::size_t i = 0; i < kExpectedItems.size(); ++i) {
    const EraseItem& item = Catalogue()[i];
    const ExpectedItem& expected = kExpectedItems[i];
    const std::string where = "row " + std::to_string(i + 1);
    EXPECT_EQ(NameOf(item.array, item.index), NameOf(expected.array, expected.index)) << where;
    EXPECT_STREQ(item.key, expected.key) << where;
    EXPECT_STREQ(item.caption, expected.caption) << where;
    EXPECT_STREQ(item.logLine, expected.logLine) << where;
    EXPECT_STREQ(item.secondLogLine, expected.secondLogLine) << where;
    EXPECT_EQ(item.runs == Runs::Yes, expected.runs) << where;
    EXPECT_EQ(item.cleaner != nullptr, expected.logLine != nullptr) << where << ": what writes a line does its work";
  }
}

// The cleaners that have no counterpart in the table; those without an address of their own are seen at work elsewhere.
TEST(Catalogue, CallsEachItemsOwnCleaner) {
  const struct {
    BoxArray array;
    int index;
    Cleaner cleaner;
    Cleaner second;
  } rows[] = {
      {kIe, 0, &cleaners::Command7, nullptr},
      {kIe, 1, &cleaners::cmdAutoComplte, nullptr},
      {kIe, 3, &cleaners::ClearAutoCompletePasswords, nullptr},
      {kIe, 4, &cleaners::ClearIEHistory, nullptr},
      {kIe, 7, &cleaners::ClearLockedIndexFiles, nullptr},
      {kWin, 0, &cleaners::ClearWindowsTemp, nullptr},
      {kWin, 1, &cleaners::ClearRecentDocs, nullptr},
      {kWin, 3, &cleaners::ClearScanDiskFiles, nullptr},
      {kWin, 4, &cleaners::ClearFind, nullptr},
      {kWin, 5, &cleaners::ClearRunMRU, nullptr},
      {kWin, 6, &cleaners::ClearClipboard, nullptr},
      {kWin, 7, nullptr, nullptr},
      {kWin, 8, &cleaners::ClearRegistryStreams, nullptr},
      {kNet, 1, &cleaners::NSTypedUrl, nullptr},
      {kNet, 2, &cleaners::CleanNetscapeMail, nullptr},
      {kNet, 3, &cleaners::CleanNescapeCache, nullptr},
      {kOpera, 0, &cleaners::CleanOperaCookies, &cleaners::CleanOpera7Cookies},
      {kOpera, 1, &cleaners::CleanOperaCache, &cleaners::CleanOpera7Cache},
      {kOpera, 2, &cleaners::CleanOperaTypedUrls, nullptr},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ItemOf(row.array, row.index).cleaner, row.cleaner) << NameOf(row.array, row.index);
    EXPECT_EQ(ItemOf(row.array, row.index).secondCleaner, row.second) << NameOf(row.array, row.index);
  }
  EXPECT_EQ(ItemOf(kIe, 8).secondCleaner, ItemOf(kIe, 2).cleaner) << "the cookies' item clears the cache as well";
}

TEST(Catalogue, VisitsTheBoxesArrayByArray) {
  std::size_t place = 0;
  for (const BoxArray array : {kIe, kWin, kNet, kOpera}) {
    for (int index = 0; index < ExpectedBoxCount(array); ++index, ++place) {
      ASSERT_LT(place, ItemsInBoxOrder().size());
      EXPECT_EQ(NameOf(ItemsInBoxOrder()[place]->array, ItemsInBoxOrder()[place]->index), NameOf(array, index));
    }
  }
  EXPECT_EQ(place, Catalogue().size());
}

TEST(ItemFlag, IsATextOfItsOwnForEachItem) {
  std::set<const std::string*> flags;
  for (const EraseItem& item : Catalogue()) flags.insert(&ItemFlag(item));
  EXPECT_EQ(flags.size(), Catalogue().size());
}

TEST(StoredItemFlags, AreTheFlagsWithTheirKeysInTheOrderOfTheBoxes) {
  const std::span<const settings::ItemFlag> flags = StoredItemFlags();
  const std::vector<std::string> keys = ExpectedItemKeys();
  ASSERT_EQ(flags.size(), keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(flags[i].key, keys[i]);
    EXPECT_EQ(flags[i].text, &ItemFlag(*ItemsInBoxOrder()[i]));
  }
}
