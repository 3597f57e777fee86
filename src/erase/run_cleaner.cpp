#include "erase/run_cleaner.h"

#include "cleaners/NetScapeEraser.h"
#include "cleaners/OperaClean.h"
#include "cleaners/cache_walks.h"
#include "cleaners/locked_index.h"
#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleanItems.h"
#include "cleaners/modCleaning.h"

namespace erase {

void RunCleaner(Cleaner cleaner) {
  switch (cleaner) {
    case Cleaner::WindowsTemp:
      return cleaners::ClearWindowsTemp();
    case Cleaner::RecentDocs:
      return cleaners::ClearRecentDocs();
    case Cleaner::RecycleBin:
      return cleaners::EmptyRecycleBin("", true, true, true);
    case Cleaner::ScanDiskFiles:
      return cleaners::ClearScanDiskFiles();
    case Cleaner::Find:
      return cleaners::ClearFind();
    case Cleaner::Clipboard:
      return cleaners::ClearClipboard();
    case Cleaner::RegistryStreams:
      return cleaners::ClearRegistryStreams();
    case Cleaner::TypedUrls:
      return cleaners::Command7();
    case Cleaner::AutoCompleteForms:
      return cleaners::cmdAutoComplte();
    case Cleaner::AutoCompletePasswords:
      return cleaners::ClearAutoCompletePasswords();
    case Cleaner::Cache:
      cleaners::ClearUrlCache();
      return;
    case Cleaner::IEHistory:
      return cleaners::ClearIEHistory();
    case Cleaner::LockedIndex:
      return cleaners::ClearLockedIndexFiles();
    case Cleaner::CookiesThenCache:
      cleaners::ClearCookies();
      cleaners::ClearUrlCache();
      return;
    case Cleaner::RunHistory:
      return cleaners::ClearRunMRU();
    case Cleaner::NetscapeTypedUrls:
      return cleaners::NSTypedUrl();
    case Cleaner::NetscapeMail:
      return cleaners::CleanNetscapeMail();
    case Cleaner::NetscapeCache:
      return cleaners::CleanNescapeCache();
    case Cleaner::OperaCookies:
      cleaners::CleanOperaCookies();
      return cleaners::CleanOpera7Cookies();
    case Cleaner::OperaCache:
      cleaners::CleanOperaCache();
      return cleaners::CleanOpera7Cache();
    case Cleaner::OperaTypedUrls:
      return cleaners::CleanOperaTypedUrls();
    case Cleaner::None:
      return;
  }
}

}  // namespace erase
