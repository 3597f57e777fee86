#include "cleaners/folder_contents.h"

#include <string>

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

void RemoveAndLog(const Path& folder) {
  Told(NativeRemoveFolder(folder), Trace::Folder, folder);
  LogCleanResult(AppendBackslash(folder.Shown()).append(Wide<" Erased">()), ResultStamp());
}

class Clearing final : public FolderVisitor {
 public:
  explicit Clearing(bool removeSubFolders) : removeSubFolders_(removeSubFolders) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const Path& path, const FolderEntry& entry) override { WipeListedFile(path, entry.size, WipePasses); }
  void AtFolder(const Path& path) override {
    if (removeSubFolders_) RemoveAndLog(path);
  }
  void AtOtherLink(const Path& path) override { TellStayed(Trace::Folder, path, Why::Link); }

 private:
  bool removeSubFolders_;
};

}  // namespace

void ClearFolderContents(const Path& folder, bool removeFolder, bool removeSubFolders) {
  DoEvents();
  if (!IsWalkableFolder(folder)) return;
  Clearing clearing(removeSubFolders);
  WalkFolder(folder, clearing);
  if (removeFolder && !StopErase) RemoveAndLog(folder);
}

}  // namespace cleaners
