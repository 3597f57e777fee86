#include "cleaners/modCleanItems.h"

#include <cstdint>

#include "cleaners/clean_log.h"
#include "cleaners/recycle_bin_root.h"
#include "platform/key_tree.h"
#include "platform/main_window.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "platform/told_of_files.h"
#include "platform/wide_system.h"
#include "platform/wide_text.h"
#include "platform/window_answers.h"

namespace cleaners {
using namespace platform;

namespace {

// Emptying waits for the owner's window, which may hang.
bool OwnerAnswers() {
  constexpr UINT kPatience = 1000;  // milliseconds
  const HWND owner = ::GetClipboardOwner();
  return !::IsWindow(owner) || AnswersWithin(kPatience, owner);
}

// The list itself, and the shortcuts that Windows keeps beside it.
constexpr char kRecentKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RecentDocs";

struct RecentDocs {
  KeyContents list;
  int shortcuts = 0;
};

// For the tally alone: nothing is looked for where nobody listens.
RecentDocs FindRecentDocs() {
  RecentDocs found;
  if (Listening == nullptr) return found;
  quietly([&] {
    found.list = ContentsOfKey(HKEY_CURRENT_USER, kRecentKey);
    FolderListing listing(FindSpecialFolder(kRecentFolder), Wide<"*.lnk">());
    for (FolderEntry entry; listing.Next(entry);) ++found.shortcuts;
  });
  return found;
}

constexpr char kBin[] = "the recycle bin";

// For the tally alone; 0 where the system does not tell.
int ItemsInBin(const std::string& root) {
  SHQUERYRBINFO facts{};
  facts.cbSize = sizeof facts;
  static_assert(sizeof facts == 20);
  if (Listening != nullptr && late::SHQueryRecycleBin) late::SHQueryRecycleBin(root.c_str(), &facts);
  return static_cast<int>(facts.i64NumItems);
}

}  // namespace

void ClearRecentDocs() {
  resumeNext([] {
    const RecentDocs before = FindRecentDocs();
    resumeNext([] { late::SHAddToRecentDocs(0, nullptr); });
    const RecentDocs after = FindRecentDocs();
    TellDifference(Trace::File, before.shortcuts, after.shortcuts, "shortcuts to recent documents");
    const int kept = after.list.keys > 0 ? 1 : 0;  // the list's own key, which may be left empty
    TellDifference(Trace::Key, before.list.keys - kept, after.list.keys - kept, "RecentDocs");
    TellDifference(Trace::Value, before.list.values, after.list.values, "RecentDocs");
  });
  resumeNext([] { LogCleanResult(Wide<"Recent Docs List Cleared">(), ResultStamp()); });
}

void EmptyRecycleBin(const std::string& driveRoot, bool noConfirmation, bool noProgress, bool noSound) {
  resumeNext([&] {
    const std::string root = RecycleBinRoot(driveRoot);
    const int before = ItemsInBin(root);
    if (!late::SHEmptyRecycleBin) TellStayed(kBin, Why::NoFunction);
    late::SHEmptyRecycleBin(MainWindowHandle, root.c_str(), RecycleBinFlags(noConfirmation, noProgress, noSound));
    TellDifference(Trace::BinItem, before, ItemsInBin(root), kBin);
  });
  resumeNext([] { LogCleanResult(Wide<"Recycle Bin Cleared ">(), ResultStamp()); });
}

void ClearClipboard() {
  ::OpenClipboard(MainWindowHandle);
  resumeNext([] {
    const int formats = ::CountClipboardFormats();
    if (OwnerAnswers() && ::EmptyClipboard()) {
      TellErased(Trace::ClipboardFormat, formats);
      LogCleanResult(Wide<"Clipboard Cleared">(), ResultStamp());
    } else {
      TellStayed("the clipboard", Why::InUse);
      LogCleanResult(Wide<"Clipboard ">(), Wide<"Terminated">());
    }
  });
  ::CloseClipboard();
}

}  // namespace cleaners
