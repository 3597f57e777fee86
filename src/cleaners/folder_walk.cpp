// The walk keeps one open listing per level on a stack of its own, so that neither deep trees nor folders with thousands
// of subfolders cost more than their entries, and a name that cannot be deleted is met once.
#include "cleaners/folder_walk.h"

#include <memory>
#include <vector>

#include "cleaners/listed_names.h"
#include "platform/message_pump.h"
#include "platform/path_text.h"

namespace cleaners {
using namespace platform;

namespace {

class FolderWalk {
 public:
  FolderWalk(const NativePath& root, FolderVisitor& visitor) : visitor_(visitor), path_(root) {}

  void Run() {
    Enter();
    while (!levels_.empty() && !visitor_.IsOver()) Step();
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
      visitor_.AtFile(path_, entry_);
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
    if (IsNamedLink(entry_)) visitor_.AtFolder(path_);
    path_.resize(parentLength_);
  }

  void Leave() {
    const std::size_t parentLength = levels_.back().parentLength;
    levels_.pop_back();  // closes the listing; a folder that is being listed cannot be removed
    if (levels_.empty()) return;
    if (!visitor_.IsOver()) visitor_.AtFolder(path_);
    path_.resize(parentLength);
  }

  // The two entries that every folder has; the walk has done with them from the start.
  // IsListed looks past blanks; " ." is a folder like any other.
  static bool IsDoneWith(const std::wstring& name) {
    static const std::vector<std::string> visited = {".", ".."};
    if (name.size() > 2 || name.find(L' ') != std::wstring::npos) return false;
    return IsListed(visited, std::string(name.begin(), name.end()));
  }

  FolderVisitor& visitor_;
  std::vector<Level> levels_;
  NativePath path_;  // the folder being listed, with its backslash
  std::size_t parentLength_ = 0;
  FolderEntry entry_;
};

}  // namespace

NativePath WalkableFolder(const std::string& folder) {
  if (!IsAbsolutePath(folder) || IsRootPath(folder)) return {};
  const NativePath native = ToNativePath(AppendBackslash(folder));
  if (native.empty() || IsRootPath(ShownPath(native))) return {};  // now without "." and ".."
  // Asked without the "\" behind it: with it some systems answer for the link's target.
  return IsFolderAndNoLink(NativeAttributes(native.substr(0, native.size() - 1))) ? native : NativePath();
}

void WalkFolder(const NativePath& walkableFolder, FolderVisitor& visitor) { FolderWalk(walkableFolder, visitor).Run(); }

}  // namespace cleaners
