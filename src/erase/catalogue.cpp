#include "erase/catalogue.h"

#include <algorithm>

namespace erase {

namespace {
constexpr auto kIe = BoxArray::chkIEsettings;
constexpr auto kWin = BoxArray::chkWinsettings;
constexpr auto kNet = BoxArray::chkNetsettings;
constexpr auto kOpera = BoxArray::chkOsettings;
}  // namespace

// clang-format off
const std::array<EraseItem, kItemCount> kCatalogue = {{
    {kIe, 0, settings::Setting::LocationbarHistory, "Erase Location Bar History", true,
     "Erasing Internet Location Bar History...", Cleaner::TypedUrls},
    {kIe, 1, settings::Setting::ClearAutoComplete, "Erase AutoComplete  Forms Data", true,
     "Erasing Auto Complete forms data...", Cleaner::AutoCompleteForms},
    {kIe, 3, settings::Setting::ClearAutoCompletePower, "Erase AutoComplete Password Data", true,
     "Erasing Auto Complete password data...", Cleaner::AutoCompletePasswords},
    {kIe, 2, settings::Setting::TemporaryInternetFile, "Erase Temporary Internet Files (Cache)", true,
     "Erasing Internet Temporary File...", Cleaner::Cache},
    {kIe, 4, settings::Setting::InternetHistory, "Internet History", true,
     "Erasing IE History...", Cleaner::IEHistory},
    {kIe, 7, settings::Setting::ClearLockedIndex, "Erase Locked Index.dat", true,
     "Erasing  Locked Index.dat...", Cleaner::LockedIndex},
    {kIe, 8, settings::Setting::Cookies, "Erase Cookies", true,
     "Erasing Cookies...", Cleaner::CookiesThenCache},
    {kWin, 0, settings::Setting::WinTempFileFolder, "Erase Windows Temp File/Folder", true,
     "Erasing Windows Temp File/Folder ...", Cleaner::WindowsTemp},
    {kWin, 1, settings::Setting::RecentDocumentList, "Erase Recent Document List", true,
     "Erasing Windows Recent Document list ...", Cleaner::RecentDocs},
    {kWin, 2, settings::Setting::RecycleBin, "Erase Recycle Bin", true,
     "Erasing Windows Recycle Bin ...", Cleaner::RecycleBin},
    {kWin, 3, settings::Setting::ScanDisk, "Erase ScanDisk .chk File", true,
     "Erasing Scandisk .Chk Files...", Cleaner::ScanDiskFiles},
    {kWin, 4, settings::Setting::FindFileFolderHistory, "Erase Find File/Folder History", true,
     "Erasing Find File/Folder History...", Cleaner::Find},
    {kWin, 5, settings::Setting::RunHistory, "Erase Run History", true,
     "Erasing RUN History...", Cleaner::RunHistory},
    {kWin, 6, settings::Setting::OpenSavedDialoge, "Erase Clipboard", true,
     "Erasing Clipboard History...", Cleaner::Clipboard},
    // Advances the bar and pauses, and does no work.
    {kWin, 7, settings::Setting::RecentDocument, "Erase Recent File/Folder", true, nullptr, Cleaner::None},
    {kWin, 8, settings::Setting::EraseRegistryFrame, "Erase Registry Fragment", true,
     "Erasing Erase Registry Fragment...", Cleaner::RegistryStreams},
    {kNet, 1, settings::Setting::NTypedHistory, "Erase Netscape Typed URL", true,
     "Erasing Netscape Typed Url...", Cleaner::NetscapeTypedUrls},
    {kNet, 2, settings::Setting::NClearMailHistry, "Erase Mail History", true,
     "Erasing Netscape Mail History...", Cleaner::NetscapeMail},
    // The cookie line is written by this item, not by the box "Erase Netscape Cookies".
    {kNet, 3, settings::Setting::NCache, "Erase Netscape Cache", true,
     "Erasing Netscape Cache...", Cleaner::NetscapeCache, "Erasing Netscape Cookies..."},
    {kOpera, 0, settings::Setting::Ocookies, "Erase Opera Cookies", true,
     "Erasing Opera Cookies ...", Cleaner::OperaCookies},
    {kOpera, 1, settings::Setting::OClean, "Erase Opera Cache", true,
     "Erasing Opera Cache...", Cleaner::OperaCache},
    {kOpera, 2, settings::Setting::OTypedUrl, "Erase Typed URL", true,
     "Erasing Opera Typed URLs....", Cleaner::OperaTypedUrls},
    // Shown, saved and counted as selected, but never run.
    {kIe, 5, settings::Setting::UrlErrorLogs, "Erase URL Error Logs", false, nullptr, Cleaner::None},
    {kIe, 6, settings::Setting::IEHistory, "Erase IE History", false, nullptr, Cleaner::None},
    {kNet, 0, settings::Setting::NCookies, "Erase Netscape Cookies", false, nullptr, Cleaner::None},
}};
// clang-format on

const EraseItem* FindItem(BoxArray array, int index) {
  const auto found = std::find_if(kCatalogue.begin(), kCatalogue.end(),
                                  [=](const EraseItem& item) { return item.array == array && item.index == index; });
  return found != kCatalogue.end() ? &*found : nullptr;
}

}  // namespace erase
