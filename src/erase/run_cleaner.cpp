#include "erase/run_cleaner.h"

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
    // The browsers' cleaners; docs/status.md lists what is still to come.
    case Cleaner::None:
    case Cleaner::TypedUrls:
    case Cleaner::AutoCompleteForms:
    case Cleaner::AutoCompletePasswords:
    case Cleaner::Cache:
    case Cleaner::IEHistory:
    case Cleaner::LockedIndex:
    case Cleaner::CookiesThenCache:
    case Cleaner::RunHistory:
    case Cleaner::NetscapeTypedUrls:
    case Cleaner::NetscapeMail:
    case Cleaner::NetscapeCache:
    case Cleaner::OperaCookies:
    case Cleaner::OperaCache:
    case Cleaner::OperaTypedUrls:
      return;
  }
}
