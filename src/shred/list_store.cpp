#include "shred/list_store.h"

#include <string>

#include "platform/message_box.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/whole_file.h"
#include "shred/list_file.h"
#include "shred/modShred.h"

namespace shred {
using namespace platform;

namespace {

Path ListFile() { return ProgramFolder() / Wide<"QUELLIX_Shred">(); }

void TakeAttributesAway() { NativeSetAttributes(ListFile(), FILE_ATTRIBUTE_NORMAL); }

}  // namespace

std::optional<std::vector<WideText>> StoredList() {
  MendWholeFile(ListFile());
  if (PresenceOf(ListFile()) == Presence::Gone) return {};
  if (IsTooLarge(ListFile())) {
    ShowMessage("The list of files to shred is larger than 16 MB. Quellix does not load it.", MB_ICONEXCLAMATION);
    return {};
  }
  return ReadListFile(ReadWholeFile(ListFile()));
}

void StoreList(const std::vector<WideText>& lines) {
  quietly([] { TakeAttributesAway(); });
  ReplaceWholeFile(ListFile(), ListFileText(lines));
}

void DeleteStoredList() {
  if (!Validate(ListFile())) return;
  resumeNext([] { TakeAttributesAway(); });
  if (!WipeWholeFile(ListFile())) RaiseLastError();
}

}  // namespace shred
