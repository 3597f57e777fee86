// The walk keeps one open folder per level on a stack of its own, so that neither deep trees nor folders with thousands
// of subfolders cost more than their entries, and a name that cannot be deleted is met once. A level holds no path, and of
// its listing no more than what is still to come.
#include "cleaners/folder_walk.h"

#include <string>
#include <utility>
#include <vector>

#include "cleaners/listed_names.h"
#include "platform/message_pump.h"
#include "platform/told_of_files.h"

namespace cleaners {
using namespace platform;

namespace {

class FolderWalk {
 public:
  FolderWalk(const Path& root, OpenFolder opened, FolderVisitor& visitor) : visitor_(visitor), root_(root), path_(root) {
    if (opened) levels_.push_back(std::move(opened));
  }

  bool Run() {
    while (!levels_.empty() && !visitor_.IsOver()) Step();
    return isDone_;
  }

 private:
  void Step() {
    if (!levels_.back().IsStillAt(path_, root_)) return Abandon();
    if (!levels_.back().Next(entry_)) {
      Leave();
    } else if (!IsFolder(entry_.attributes)) {
      path_ /= entry_.name;
      visitor_.AtFile(levels_.back(), path_, entry_);
      path_.RemoveName();
    } else if (!IsDoneWith(entry_.name)) {
      Descend();
    }
    DoEventsNowAndThen();
  }

  void Descend() {
    path_ /= entry_.name;
    if (!IsLink(entry_.attributes)) {
      // None where the listing is out of date and a link has taken the folder's place.
      if (OpenFolder subfolder = levels_.back().Enter(path_)) {
        levels_.back().Rest();
        levels_.push_back(std::move(subfolder));
        return;
      }
      // One that may not be listed may be empty and removed all the same; one that is not empty stays.
      if (const DWORD error = ::GetLastError(); error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED)
        visitor_.AtFolder(levels_.back(), path_);
    } else if (IsNamedLink(entry_)) {
      visitor_.AtLink(levels_.back(), path_);
    } else {
      TellStayed(path_, Why::Link);  // its removal may reach what it leads to
    }
    path_.RemoveName();
  }

  void Leave() {
    OpenFolder done = std::move(levels_.back());
    levels_.pop_back();
    if (levels_.empty()) {
      isDone_ = true;
      return;
    }
    levels_.back().TakeOverFrom(done);
    done = OpenFolder();  // an open folder cannot be removed
    if (!visitor_.IsOver()) visitor_.AtFolder(levels_.back(), path_);
    path_.RemoveName();
  }

  void Abandon() {
    levels_.pop_back();
    if (!levels_.empty()) path_.RemoveName();
  }

  // The two entries that every folder has; the walk has done with them from the start.
  // IsListed looks past blanks; " ." is a folder like any other.
  static bool IsDoneWith(WideView name) {
    static const std::vector<WideText> visited = {L".", L".."};
    return name.size() <= 2 && name.find(L' ') == WideView::npos && IsListed(visited, name);
  }

  FolderVisitor& visitor_;
  const Path& root_;
  std::vector<OpenFolder> levels_;
  Path path_;  // the folder being listed
  FolderEntry entry_;
  bool isDone_ = false;
};

}  // namespace

OpenFolder OpenForWalk(const Path& folder) {
  return folder.IsEmpty() || folder.IsRoot() ? OpenFolder() : OpenFolder(folder);
}

bool WalkFolder(const Path& folder, OpenFolder opened, FolderVisitor& visitor) {
  return FolderWalk(folder, std::move(opened), visitor).Run();
}

}  // namespace cleaners
