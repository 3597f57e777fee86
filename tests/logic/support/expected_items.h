// What the catalogue of erasable items is to hold, written down apart from it, and names for its enumerators in messages.
#pragma once

#include <string>
#include <vector>

#include "erase/catalogue.h"

using namespace erase;

struct ExpectedItem {
  BoxArray array;
  int index;
  const char* key;  // of the item's flag
  const char* caption;
  const char* logLine;  // null: none
  Cleaner cleaner;
  const char* secondLogLine;  // null: none
};

inline constexpr auto kIe = BoxArray::chkIEsettings;
inline constexpr auto kWin = BoxArray::chkWinsettings;
inline constexpr auto kNet = BoxArray::chkNetsettings;
inline constexpr auto kOpera = BoxArray::chkOsettings;

// clang-format off
// In the order in which they run.
inline const std::vector<ExpectedItem> kItemsThatRun = {
    {kIe, 0, "LocationbarHistory", "Erase Location Bar History",
     "Erasing Internet Location Bar History...", Cleaner::TypedUrls, nullptr},
    {kIe, 1, "ClearAutoComplete", "Erase AutoComplete  Forms Data",
     "Erasing Auto Complete forms data...", Cleaner::AutoCompleteForms, nullptr},
    {kIe, 3, "ClearAutoCompletePower", "Erase AutoComplete Password Data",
     "Erasing Auto Complete password data...", Cleaner::AutoCompletePasswords, nullptr},
    {kIe, 2, "TemporaryInternetFile", "Erase Temporary Internet Files (Cache)",
     "Erasing Internet Temporary File...", Cleaner::Cache, nullptr},
    {kIe, 4, "InternetHistory", "Internet History",
     "Erasing IE History...", Cleaner::IEHistory, nullptr},
    {kIe, 7, "ClearLockedIndex", "Erase Locked Index.dat",
     "Erasing  Locked Index.dat...", Cleaner::LockedIndex, nullptr},
    {kIe, 8, "Cookies", "Erase Cookies",
     "Erasing Cookies...", Cleaner::CookiesThenCache, nullptr},
    {kWin, 0, "WinTempFileFolder", "Erase Windows Temp File/Folder",
     "Erasing Windows Temp File/Folder ...", Cleaner::WindowsTemp, nullptr},
    {kWin, 1, "RecentDocumentList", "Erase Recent Document List",
     "Erasing Windows Recent Document list ...", Cleaner::RecentDocs, nullptr},
    {kWin, 2, "RecycleBin", "Erase Recycle Bin",
     "Erasing Windows Recycle Bin ...", Cleaner::RecycleBin, nullptr},
    {kWin, 3, "ScanDisk", "Erase ScanDisk .chk File",
     "Erasing Scandisk .Chk Files...", Cleaner::ScanDiskFiles, nullptr},
    {kWin, 4, "FindFileFolderHistory", "Erase Find File/Folder History",
     "Erasing Find File/Folder History...", Cleaner::Find, nullptr},
    {kWin, 5, "RunHistory", "Erase Run History",
     "Erasing RUN History...", Cleaner::RunHistory, nullptr},
    {kWin, 6, "OpenSavedDialoge", "Erase Clipboard",
     "Erasing Clipboard History...", Cleaner::Clipboard, nullptr},
    {kWin, 7, "RecentDocument", "Erase Recent File/Folder",
     nullptr, Cleaner::None, nullptr},
    {kWin, 8, "EraseRegistryFrame", "Erase Registry Fragment",
     "Erasing Erase Registry Fragment...", Cleaner::RegistryStreams, nullptr},
    {kNet, 1, "NTypedHistory", "Erase Netscape Typed URL",
     "Erasing Netscape Typed Url...", Cleaner::NetscapeTypedUrls, nullptr},
    {kNet, 2, "NClearMailHistry", "Erase Mail History",
     "Erasing Netscape Mail History...", Cleaner::NetscapeMail, nullptr},
    {kNet, 3, "NCache", "Erase Netscape Cache",
     "Erasing Netscape Cache...", Cleaner::NetscapeCache, "Erasing Netscape Cookies..."},
    {kOpera, 0, "Ocookies", "Erase Opera Cookies",
     "Erasing Opera Cookies ...", Cleaner::OperaCookies, nullptr},
    {kOpera, 1, "OClean", "Erase Opera Cache",
     "Erasing Opera Cache...", Cleaner::OperaCache, nullptr},
    {kOpera, 2, "OTypedUrl", "Erase Typed URL",
     "Erasing Opera Typed URLs....", Cleaner::OperaTypedUrls, nullptr},
};

inline const std::vector<ExpectedItem> kItemsThatNeverRun = {
    {kIe, 5, "UrlErrorLogs", "Erase URL Error Logs", nullptr, Cleaner::None, nullptr},
    {kIe, 6, "IEHistory", "Erase IE History", nullptr, Cleaner::None, nullptr},
    {kNet, 0, "NCookies", "Erase Netscape Cookies", nullptr, Cleaner::None, nullptr},
};
// clang-format on

inline std::string NameOf(BoxArray array, int index) {
  static const char* const names[] = {"chkIEsettings", "chkWinsettings", "chkNetsettings", "chkOsettings"};
  return std::string(names[static_cast<std::size_t>(array)]) + " " + std::to_string(index);
}

inline std::string NameOf(Cleaner cleaner) {
  static const char* const names[] = {"None",
                                      "TypedUrls",
                                      "AutoCompleteForms",
                                      "AutoCompletePasswords",
                                      "Cache",
                                      "IEHistory",
                                      "LockedIndex",
                                      "CookiesThenCache",
                                      "WindowsTemp",
                                      "RecentDocs",
                                      "RecycleBin",
                                      "ScanDiskFiles",
                                      "Find",
                                      "RunHistory",
                                      "Clipboard",
                                      "RegistryStreams",
                                      "NetscapeTypedUrls",
                                      "NetscapeMail",
                                      "NetscapeCache",
                                      "OperaCookies",
                                      "OperaCache",
                                      "OperaTypedUrls"};
  return names[static_cast<std::size_t>(cleaner)];
}
