#include "cleaners/modCleanItems.h"

#include "cleaners/clean_log.h"
#include "cleaners/recycle_bin_root.h"
#include "platform/main_window.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
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

}  // namespace

void ClearRecentDocs() {
  resumeNext([] { late::SHAddToRecentDocs(0, nullptr); });
  resumeNext([] { LogCleanResult(Wide<"Recent Docs List Cleared">(), ResultStamp()); });
}

void EmptyRecycleBin(const std::string& driveRoot, bool noConfirmation, bool noProgress, bool noSound) {
  resumeNext([&] {
    const std::string root = RecycleBinRoot(driveRoot);
    late::SHEmptyRecycleBin(MainWindowHandle, root.c_str(), RecycleBinFlags(noConfirmation, noProgress, noSound));
  });
  resumeNext([] { LogCleanResult(Wide<"Recycle Bin Cleared ">(), ResultStamp()); });
}

void ClearClipboard() {
  ::OpenClipboard(MainWindowHandle);
  resumeNext([] {
    if (OwnerAnswers() && ::EmptyClipboard())
      LogCleanResult(Wide<"Clipboard Cleared">(), ResultStamp());
    else
      LogCleanResult(Wide<"Clipboard ">(), Wide<"Terminated">());
  });
  ::CloseClipboard();
}

}  // namespace cleaners
