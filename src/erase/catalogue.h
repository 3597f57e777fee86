// The catalogue of erasable items: captions, log lines, settings, order and cleaner of an item stand in one row and
// nowhere else. Texts are exact, misspellings, doubled blanks and dots included.
#pragma once

#include <array>
#include <cstddef>

#include "settings/schema.h"

namespace erase {

// The four check-box arrays of the main settings panel, in the order in which boxes are counted and selected.
enum class BoxArray { chkIEsettings, chkWinsettings, chkNetsettings, chkOsettings };

constexpr std::array<int, 4> kBoxCounts = {9, 9, 4, 3};

enum class Cleaner {
  None,
  TypedUrls,
  AutoCompleteForms,
  AutoCompletePasswords,
  Cache,
  IEHistory,
  LockedIndex,
  CookiesThenCache,
  WindowsTemp,
  RecentDocs,
  RecycleBin,
  ScanDiskFiles,
  Find,
  RunHistory,
  Clipboard,
  RegistryStreams,
  NetscapeTypedUrls,
  NetscapeMail,
  NetscapeCache,
  OperaCookies,
  OperaCache,
  OperaTypedUrls,
};

struct EraseItem {
  BoxArray array;
  int index;
  settings::Setting flag;  // the item flag of the box
  const char* caption;
  bool runs;            // false: shown, saved and counted, but never run
  const char* logLine;  // null: the item writes none
  Cleaner cleaner;
  const char* secondLogLine = nullptr;  // written after the cleaner
};

constexpr std::size_t kItemCount = 25;

// The 22 items that run stand first, in the order in which they run.
extern const std::array<EraseItem, kItemCount> kCatalogue;

// The item of one box; null outside the array.
const EraseItem* FindItem(BoxArray array, int index);

}  // namespace erase
