#include "cleaners/temp_clearing.h"

#include <utility>

#include "cleaners/folder_contents.h"
#include "cleaners/folder_facts.h"
#include "cleaners/folder_walk.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/open_folder.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"

namespace cleaners {
using namespace platform;

namespace {

// The folder, which `opened` is, and what holds `kept` in it stay. `from` is the temporary folder.
void ClearAround(const Path& folder, OpenFolder opened, const Path& from, const Path& kept);

// `path` is not the folder's own entry.
void ClearSubfolder(const OpenFolder& in, const Path& path, const FolderEntry& entry, const Path& from, const Path& kept) {
  if (IsLink(entry.attributes)) {
    if (IsNamedLink(entry))
      Told(in.Remove(path), Trace::Folder, path);
    else
      TellStayed(path, Why::Link);
    return;
  }
  OpenFolder opened = in.Enter(path);
  if (!opened) return static_cast<void>(Told(false, Trace::Folder, path));
  const Path canonical = Canonical(path);
  if (!IsSameOrBelow(kept, canonical))
    ClearAndRemove(in, path, std::move(opened));
  else if (!IsSameOrBelow(canonical, kept))
    ClearAround(path, std::move(opened), from, kept);
}

// `kept` lies below the folder, by its canonical path.
void ClearAround(const Path& folder, OpenFolder opened, const Path& from, const Path& kept) {
  for (FolderEntry entry; !StopErase && opened.IsStillAt(folder, from) && opened.Next(entry);) {
    const Path path = folder / entry.name;
    if (!IsFolder(entry.attributes))
      WipeListedFile(opened, path, entry.size, WipePasses);
    else if (!path.IsEmpty())  // "." and ".."
      ClearSubfolder(opened, path, entry, from, kept);
    DoEventsNowAndThen();
  }
}

}  // namespace

void ClearTempFolder(const Path& folder) {
  const Path program = Canonical(ProgramFolder());
  if (IsSameOrBelow(program, Canonical(folder)))
    ClearAround(folder, OpenForWalk(folder), folder, program);
  else
    ClearFolderContents(folder, false, true);
}

}  // namespace cleaners
