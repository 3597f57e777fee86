// What the catalogue of erasable items is to hold, written down apart from it (erase_items.inc), and names for boxes in
// messages.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "erase/erase_item.h"

using namespace erase;

struct ExpectedItem {
  BoxArray array;
  int index;
  const char* key;  // of the item's flag
  const char* caption;
  bool runs;
  const char* logLine;        // null: none
  const char* secondLogLine;  // null: none
};

inline constexpr auto kIe = BoxArray::chkIEsettings;
inline constexpr auto kWin = BoxArray::chkWinsettings;
inline constexpr auto kNet = BoxArray::chkNetsettings;
inline constexpr auto kOpera = BoxArray::chkOsettings;

inline const char* NullIfEmpty(const char* text) { return *text != 0 ? text : nullptr; }

// In the order in which they run; those that never run come last.
inline const std::vector<ExpectedItem> kExpectedItems = {
#define ITEM(array, index, key, caption, runs, logLine, secondLogLine) \
  {BoxArray::array, index, key, caption, runs, NullIfEmpty(logLine), NullIfEmpty(secondLogLine)},
#include "erase_items.inc"
#undef ITEM
};

inline std::vector<ExpectedItem> ExpectedItemsThat(bool run) {
  std::vector<ExpectedItem> items;
  std::copy_if(kExpectedItems.begin(), kExpectedItems.end(), std::back_inserter(items),
               [run](const ExpectedItem& item) { return item.runs == run; });
  return items;
}

inline const std::vector<ExpectedItem> kItemsThatRun = ExpectedItemsThat(true);
inline const std::vector<ExpectedItem> kItemsThatNeverRun = ExpectedItemsThat(false);

// Where the bar of a run over all boxes ends: ten for each of them, also for those that never run.
inline const int kFullBar = static_cast<int>(kExpectedItems.size()) * 10;

inline int ExpectedBoxCount(BoxArray array) {
  return static_cast<int>(std::count_if(kExpectedItems.begin(), kExpectedItems.end(),
                                        [array](const ExpectedItem& item) { return item.array == array; }));
}

// The items' keys in the order of the boxes, in which they are read and written.
inline std::vector<std::string> ExpectedItemKeys() {
  std::vector<ExpectedItem> items = kExpectedItems;
  std::sort(items.begin(), items.end(), [](const ExpectedItem& one, const ExpectedItem& other) {
    return one.array != other.array ? one.array < other.array : one.index < other.index;
  });
  std::vector<std::string> keys;
  for (const ExpectedItem& item : items) keys.emplace_back(item.key);
  return keys;
}

inline std::string NameOf(BoxArray array, int index) {
  static const char* const names[] = {"chkIEsettings", "chkWinsettings", "chkNetsettings", "chkOsettings"};
  return std::string(names[static_cast<std::size_t>(array)]) + " " + std::to_string(index);
}
