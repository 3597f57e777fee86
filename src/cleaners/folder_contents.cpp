// The walk keeps one open listing per level on a stack of its own, so that neither deep trees nor folders with thousands
// of subfolders cost more than their entries, and a name that cannot be deleted is met once.
#include "cleaners/folder_contents.h"

#include <memory>
#include <vector>

#include "cleaners/clean_log.h"
#include "cleaners/listed_names.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/path_text.h"
#include "platform/stop_request.h"

namespace {

class FolderWalk {
 public:
  FolderWalk(NativePath root, bool removeSubFolders) : path_(std::move(root)), removeSubFolders_(removeSubFolders) {}

  // Leaves the root's listing closed, so that the folder itself can be removed.
  void Run() {
    Enter();
    while (!levels_.empty() && !StopErase) Step();
    levels_.clear();
  }

 private:
  struct Level {
    std::unique_ptr<FolderListing> listing;
    std::size_t parentLength;  // of the path, to go back to
  };

  void Enter() { levels_.push_back({std::make_unique<FolderListing>(path_), parentLength_}); }

  void Step() {
    if (!levels_.back().listing->Next(entry_)) {
      Leave();
    } else if (!IsFolder(entry_.attributes)) {
      const std::size_t length = path_.size();
      path_ += entry_.name;
      WipeListedFile(path_, entry_.size, WipePasses);
      path_.resize(length);
    } else if (!IsDoneWith(entry_.name)) {
      Descend();
    }
    DoEventsNowAndThen();
  }

  void Descend() {
    parentLength_ = path_.size();
    path_ += entry_.name;
    // Asked once more: the listing may be minutes old, and a link may have taken the folder's place.
    if (!IsLink(entry_.attributes) && !IsLink(NativeAttributes(path_))) {
      path_ += L'\\';
      Enter();
      return;
    }
    if (removeSubFolders_ && IsNamedLink(entry_)) Remove();
    path_.resize(parentLength_);
  }

  void Leave() {
    const std::size_t parentLength = levels_.back().parentLength;
    levels_.pop_back();  // closes the listing; a folder that is being listed cannot be removed
    if (levels_.empty()) return;
    if (removeSubFolders_ && !StopErase) Remove();
    path_.resize(parentLength);
  }

  void Remove() {
    NativeRemoveFolder(path_);
    LogCleanResult(AppendBackslash(ShownPath(path_)) + " Erased", ResultStamp());
  }

  // The two entries that every folder has; the walk has done with them from the start.
  // IsListed looks past blanks; " ." is a folder like any other.
  static bool IsDoneWith(const std::wstring& name) {
    static const std::vector<std::string> visited = {".", ".."};
    if (name.size() > 2 || name.find(L' ') != std::wstring::npos) return false;
    return IsListed(visited, std::string(name.begin(), name.end()));
  }

  std::vector<Level> levels_;
  NativePath path_;  // the folder being listed, with its backslash
  std::size_t parentLength_ = 0;
  FolderEntry entry_;
  bool removeSubFolders_;
};

}  // namespace

void ClearFolderContents(const std::string& folder, bool removeFolder, bool removeSubFolders) {
  if (!IsAbsolutePath(folder) || IsRootPath(folder)) return;
  const NativePath root = ToNativePath(AppendBackslash(folder));
  if (root.empty()) return;
  DoEvents();
  const std::string full = ShownPath(root);  // without "." and ".."
  // Asked without the "\" behind it: with it some systems answer for the link's target.
  const DWORD attributes = NativeAttributes(root.substr(0, root.size() - 1));
  if (IsRootPath(full) || !IsFolder(attributes) || IsLink(attributes)) return;
  FolderWalk(root, removeSubFolders).Run();
  if (!removeFolder || StopErase) return;
  NativeRemoveFolder(root);
  LogCleanResult(full + " Erased", ResultStamp());
}
