#include "cleaners/folder_contents.h"

#include "cleaners/clean_log.h"
#include "cleaners/folder_walk.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/path_text.h"
#include "platform/stop_request.h"

namespace cleaners {
using namespace platform;

namespace {

void RemoveAndLog(const NativePath& folder) {
  NativeRemoveFolder(folder);
  LogCleanResult(AppendBackslash(ShownPath(folder)) + " Erased", ResultStamp());
}

class Clearing final : public FolderVisitor {
 public:
  explicit Clearing(bool removeSubFolders) : removeSubFolders_(removeSubFolders) {}

  bool IsOver() override { return StopErase; }
  void AtFile(const NativePath& path, const FolderEntry& entry) override { WipeListedFile(path, entry.size, WipePasses); }
  void AtFolder(const NativePath& path) override {
    if (removeSubFolders_) RemoveAndLog(path);
  }

 private:
  bool removeSubFolders_;
};

}  // namespace

void ClearFolderContents(const std::string& folder, bool removeFolder, bool removeSubFolders) {
  DoEvents();
  const NativePath root = WalkableFolder(folder);
  if (root.empty()) return;
  Clearing clearing(removeSubFolders);
  WalkFolder(root, clearing);
  if (removeFolder && !StopErase) RemoveAndLog(root);
}

}  // namespace cleaners
