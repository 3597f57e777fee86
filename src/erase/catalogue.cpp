#include "erase/catalogue.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "cleaners/NetScapeEraser.h"
#include "cleaners/OperaClean.h"
#include "cleaners/cache_walks.h"
#include "cleaners/locked_index.h"
#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleanItems.h"
#include "cleaners/modCleaning.h"

namespace erase {
using namespace cleaners;

namespace {

constexpr auto kIe = BoxArray::chkIEsettings;
constexpr auto kWin = BoxArray::chkWinsettings;
constexpr auto kNet = BoxArray::chkNetsettings;
constexpr auto kOpera = BoxArray::chkOsettings;

// The bytes that it removed are of no interest here.
void ClearCache() { ClearUrlCache(); }
void ClearCookieEntries() { ClearCookies(); }

void EmptyEveryRecycleBin() { EmptyRecycleBin("", true, true, true); }

// clang-format off
constexpr EraseItem kCatalogue[] = {
    {kIe, 0, "LocationbarHistory", "Erase Location Bar History",
     "Erasing Internet Location Bar History...", &Command7},
    {kIe, 1, "ClearAutoComplete", "Erase AutoComplete  Forms Data",
     "Erasing Auto Complete forms data...", &cmdAutoComplte},
    {kIe, 3, "ClearAutoCompletePower", "Erase AutoComplete Password Data",
     "Erasing Auto Complete password data...", &ClearAutoCompletePasswords},
    {kIe, 2, "TemporaryInternetFile", "Erase Temporary Internet Files (Cache)",
     "Erasing Internet Temporary File...", &ClearCache},
    {kIe, 4, "InternetHistory", "Internet History",
     "Erasing IE History...", &ClearIEHistory},
    {kIe, 7, "ClearLockedIndex", "Erase Locked Index.dat",
     "Erasing  Locked Index.dat...", &ClearLockedIndexFiles},
    {kIe, 8, "Cookies", "Erase Cookies",
     "Erasing Cookies...", &ClearCookieEntries, &ClearCache},
    {kWin, 0, "WinTempFileFolder", "Erase Windows Temp File/Folder",
     "Erasing Windows Temp File/Folder ...", &ClearWindowsTemp},
    {kWin, 1, "RecentDocumentList", "Erase Recent Document List",
     "Erasing Windows Recent Document list ...", &ClearRecentDocs},
    {kWin, 2, "RecycleBin", "Erase Recycle Bin",
     "Erasing Windows Recycle Bin ...", &EmptyEveryRecycleBin},
    {kWin, 3, "ScanDisk", "Erase ScanDisk .chk File",
     "Erasing Scandisk .Chk Files...", &ClearScanDiskFiles},
    {kWin, 4, "FindFileFolderHistory", "Erase Find File/Folder History",
     "Erasing Find File/Folder History...", &ClearFind},
    {kWin, 5, "RunHistory", "Erase Run History",
     "Erasing RUN History...", &ClearRunMRU},
    {kWin, 6, "OpenSavedDialoge", "Erase Clipboard",
     "Erasing Clipboard History...", &ClearClipboard},
    // Advances the bar and pauses, and does no work.
    {kWin, 7, "RecentDocument", "Erase Recent File/Folder"},
    {kWin, 8, "EraseRegistryFrame", "Erase Registry Fragment",
     "Erasing Erase Registry Fragment...", &ClearRegistryStreams},
    {kNet, 1, "NTypedHistory", "Erase Netscape Typed URL",
     "Erasing Netscape Typed Url...", &NSTypedUrl},
    {kNet, 2, "NClearMailHistry", "Erase Mail History",
     "Erasing Netscape Mail History...", &CleanNetscapeMail},
    // The cookie line is written by this item, not by the box "Erase Netscape Cookies".
    {kNet, 3, "NCache", "Erase Netscape Cache",
     "Erasing Netscape Cache...", &CleanNescapeCache, nullptr, "Erasing Netscape Cookies..."},
    {kOpera, 0, "Ocookies", "Erase Opera Cookies",
     "Erasing Opera Cookies ...", &CleanOperaCookies, &CleanOpera7Cookies},
    {kOpera, 1, "OClean", "Erase Opera Cache",
     "Erasing Opera Cache...", &CleanOperaCache, &CleanOpera7Cache},
    {kOpera, 2, "OTypedUrl", "Erase Typed URL",
     "Erasing Opera Typed URLs....", &CleanOperaTypedUrls},
    {.array = kIe, .index = 5, .key = "UrlErrorLogs", .caption = "Erase URL Error Logs", .runs = Runs::Never},
    {.array = kIe, .index = 6, .key = "IEHistory", .caption = "Erase IE History", .runs = Runs::Never},
    {.array = kNet, .index = 0, .key = "NCookies", .caption = "Erase Netscape Cookies", .runs = Runs::Never},
};
// clang-format on

constexpr std::size_t kCount = std::size(kCatalogue);

constexpr bool IsBefore(const EraseItem* one, const EraseItem* other) {
  return one->array != other->array ? one->array < other->array : one->index < other->index;
}

constexpr std::array<const EraseItem*, kCount> InBoxOrder() {
  std::array<const EraseItem*, kCount> items{};
  for (std::size_t row = 0; row < kCount; ++row) items[row] = &kCatalogue[row];
  std::sort(items.begin(), items.end(), &IsBefore);
  return items;
}

constexpr std::array<const EraseItem*, kCount> kInBoxOrder = InBoxOrder();

// Index 0, 1, 2 ... in each array: no box is missing and none has two rows.
constexpr bool EachBoxHasOneRow() {
  for (std::size_t place = 0; place < kCount; ++place) {
    const bool first = place == 0 || kInBoxOrder[place - 1]->array != kInBoxOrder[place]->array;
    if (kInBoxOrder[place]->index != (first ? 0 : kInBoxOrder[place - 1]->index + 1)) return false;
  }
  return true;
}
static_assert(EachBoxHasOneRow());

}  // namespace

std::span<const EraseItem> Catalogue() { return kCatalogue; }

std::span<const EraseItem* const> ItemsInBoxOrder() { return kInBoxOrder; }

std::string& ItemFlag(const EraseItem& item) {
  static std::array<std::string, kCount> flags;
  return flags[static_cast<std::size_t>(&item - kCatalogue)];
}

// Made once and without any memory of its own: without it nothing would be read, and everything overwritten at the end.
std::span<const settings::ItemFlag> StoredItemFlags() {
  static const std::array<settings::ItemFlag, kCount> flags = [] {
    std::array<settings::ItemFlag, kCount> made{};
    std::transform(kInBoxOrder.begin(), kInBoxOrder.end(), made.begin(), [](const EraseItem* item) {
      return settings::ItemFlag{item->key, &ItemFlag(*item)};
    });
    return made;
  }();
  return flags;
}

}  // namespace erase
