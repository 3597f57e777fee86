#include "cleaners/temp_clearing.h"

#include "cleaners/folder_contents.h"
#include "cleaners/folder_facts.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"

namespace cleaners {
using namespace platform;

namespace {

void ClearAround(const Path& folder, const Path& kept);

// `path` is not the folder's own entry.
void ClearSubfolder(const Path& path, const FolderEntry& entry, const Path& kept) {
  const Path canonical = Canonical(path);
  if (IsLink(entry.attributes)) {
    if (IsNamedLink(entry))
      Told(NativeRemoveFolder(path), Trace::Folder, path);
    else
      TellStayed(Trace::Folder, path, Why::Link);
  } else if (!IsSameOrBelow(kept, canonical)) {
    ClearFolderContents(path, true, true);
  } else if (!IsSameOrBelow(canonical, kept)) {
    ClearAround(path, kept);
  }
}

// `kept` lies below the folder, by its canonical path.
void ClearAround(const Path& folder, const Path& kept) {
  if (!IsFolderAndNoLink(NativeAttributes(folder))) return;
  FolderListing listing(folder);
  for (FolderEntry entry; !StopErase && listing.Next(entry);) {
    const Path path = folder / entry.name;
    if (!IsFolder(entry.attributes))
      WipeListedFile(path, entry.size, WipePasses);
    else if (!path.IsEmpty())  // "." and ".."
      ClearSubfolder(path, entry, kept);
    DoEventsNowAndThen();
  }
}

}  // namespace

void ClearTempFolder(const Path& folder) {
  const Path program = Canonical(ProgramFolder());
  if (IsSameOrBelow(program, Canonical(folder)))
    ClearAround(folder, program);
  else
    ClearFolderContents(folder, false, true);
}

}  // namespace cleaners
