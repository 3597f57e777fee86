#include "erase/run_cleaner.h"

#include "cleaners/NetScapeEraser.h"
#include "cleaners/OperaClean.h"
#include "cleaners/cache_walks.h"
#include "cleaners/locked_index.h"
#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleanItems.h"
#include "cleaners/modCleaning.h"

void RunCleaner(Cleaner cleaner) {
  switch (cleaner) {
    case Cleaner::WindowsTemp:
      return ClearWindowsTemp();
    case Cleaner::RecentDocs:
      return ClearRecentDocs();
    case Cleaner::RecycleBin:
      return EmptyRecycleBin("", true, true, true);
    case Cleaner::ScanDiskFiles:
      return ClearScanDiskFiles();
    case Cleaner::Find:
      return ClearFind();
    case Cleaner::Clipboard:
      return ClearClipboard();
    case Cleaner::RegistryStreams:
      return ClearRegistryStreams();
    case Cleaner::TypedUrls:
      return Command7();
    case Cleaner::AutoCompleteForms:
      return cmdAutoComplte();
    case Cleaner::AutoCompletePasswords:
      return ClearAutoCompletePasswords();
    case Cleaner::Cache:
      ClearUrlCache();
      return;
    case Cleaner::IEHistory:
      return ClearIEHistory();
    case Cleaner::LockedIndex:
      return ClearLockedIndexFiles();
    case Cleaner::CookiesThenCache:
      ClearCookies();
      ClearUrlCache();
      return;
    case Cleaner::RunHistory:
      return ClearRunMRU();
    case Cleaner::NetscapeTypedUrls:
      return NSTypedUrl();
    case Cleaner::NetscapeMail:
      return CleanNetscapeMail();
    case Cleaner::NetscapeCache:
      return CleanNescapeCache();
    case Cleaner::OperaCookies:
      CleanOperaCookies();
      return CleanOpera7Cookies();
    case Cleaner::OperaCache:
      CleanOperaCache();
      return CleanOpera7Cache();
    case Cleaner::OperaTypedUrls:
      return CleanOperaTypedUrls();
    case Cleaner::None:
      return;
  }
}
