#include "cleaners/folder_contents.h"

#include <string>
#include <utility>

#include "cleaners/clean_log.h"
#include "cleaners/folder_walk.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"

namespace cleaners {
using namespace platform;

namespace {

void LogErased(const Path& folder) {
  LogCleanResult(AppendBackslash(folder.Shown()).append(Wide<" Erased">()), ResultStamp());
}

class Clearing final : public FolderVisitor {
 public:
  explicit Clearing(bool removeSubFolders) : removeSubFolders_(removeSubFolders) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const OpenFolder& in, const Path& path, const FolderEntry& entry) override {
    WipeListedFile(in, path, entry.size, WipePasses);
  }
  void AtFolder(const OpenFolder& in, const Path& path) override {
    if (!removeSubFolders_) return;
    Told(in.Remove(path), Trace::Folder, path);
    LogErased(path);
  }

 private:
  bool removeSubFolders_;
};

}  // namespace

void ClearFolderContents(const Path& folder, bool removeFolder, bool removeSubFolders) {
  OpenFolder opened = OpenForWalk(folder);  // before events run: what was judged is what is cleared
  if (!opened && !folder.IsEmpty()) Told(false, Trace::Folder, folder);
  DoEvents();
  if (!opened) return;
  Clearing clearing(removeSubFolders);
  const bool isDone = WalkFolder(folder, std::move(opened), clearing);
  if (!removeFolder || StopErase) return;
  if (isDone) Told(NativeRemoveFolder(folder), Trace::Folder, folder);
  LogErased(folder);
}

void ClearAndRemove(const OpenFolder& in, const Path& folder, OpenFolder opened) {
  Clearing clearing(true);
  const bool isDone = WalkFolder(folder, std::move(opened), clearing);
  if (isDone && !StopErase) clearing.AtFolder(in, folder);
}

}  // namespace cleaners
