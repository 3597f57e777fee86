// The walk keeps one open listing per level on a stack of its own, so that neither deep trees nor folders with thousands
// of subfolders cost more than their entries, and a name that cannot be deleted is met once.
#include "cleaners/folder_walk.h"

#include <memory>
#include <string>
#include <vector>

#include "cleaners/listed_names.h"
#include "platform/message_pump.h"

namespace cleaners {
using namespace platform;

namespace {

class FolderWalk {
 public:
  FolderWalk(const Path& root, FolderVisitor& visitor) : visitor_(visitor), path_(root) {}

  void Run() {
    Enter();
    while (!levels_.empty() && !visitor_.IsOver()) Step();
  }

 private:
  void Enter() { levels_.push_back(std::make_unique<FolderListing>(path_)); }

  void Step() {
    if (!levels_.back()->Next(entry_)) {
      Leave();
    } else if (!IsFolder(entry_.attributes)) {
      path_ /= entry_.name;
      visitor_.AtFile(path_, entry_);
      path_.RemoveName();
    } else if (!IsDoneWith(entry_.name)) {
      Descend();
    }
    DoEventsNowAndThen();
  }

  void Descend() {
    path_ /= entry_.name;
    // Asked once more: the listing may be minutes old, and a link may have taken the folder's place.
    if (!IsLink(entry_.attributes) && !IsLink(NativeAttributes(path_))) return Enter();
    if (IsNamedLink(entry_))
      visitor_.AtLink(path_);
    else
      visitor_.AtOtherLink(path_);
    path_.RemoveName();
  }

  void Leave() {
    levels_.pop_back();  // closes the listing; a folder that is being listed cannot be removed
    if (levels_.empty()) return;
    if (!visitor_.IsOver()) visitor_.AtFolder(path_);
    path_.RemoveName();
  }

  // The two entries that every folder has; the walk has done with them from the start.
  // IsListed looks past blanks; " ." is a folder like any other.
  static bool IsDoneWith(WideView name) {
    static const std::vector<WideText> visited = {L".", L".."};
    return name.size() <= 2 && name.find(L' ') == WideView::npos && IsListed(visited, name);
  }

  FolderVisitor& visitor_;
  std::vector<std::unique_ptr<FolderListing>> levels_;
  Path path_;  // the folder being listed
  FolderEntry entry_;
};

}  // namespace

bool IsWalkableFolder(const Path& folder) { return !folder.IsRoot() && IsFolderAndNoLink(NativeAttributes(folder)); }

void WalkFolder(const Path& walkableFolder, FolderVisitor& visitor) { FolderWalk(walkableFolder, visitor).Run(); }

}  // namespace cleaners
