// A walk through everything below a folder that never leaves it, on whatever errand.
#pragma once

#include "platform/handles.h"
#include "platform/native_files.h"

namespace cleaners {
using namespace platform;

// What a walk does with what it meets.
class FolderVisitor {
 public:
  // True ends the walk at once.
  virtual bool IsOver() = 0;

  virtual void AtFile(const Path& path, const FolderEntry& entry) = 0;

  // A subfolder, after everything below it.
  virtual void AtFolder(const Path& path) = 0;

  // A link to a folder: removing it as a folder removes the link alone.
  virtual void AtLink(const Path& path) { AtFolder(path); }

  // A reparse point of another kind, which is left alone: its removal may reach what it leads to.
  virtual void AtOtherLink(const Path& /*path*/) {}

 protected:
  ~FolderVisitor() = default;
};

// False when `folder` must not be entered: a root, a link, or no folder at all.
bool IsWalkableFolder(const Path& folder);

// Visits everything below a folder from the inside out, links to folders as links. The listing of a folder is closed when
// its turn comes, that of the folder itself at the end. Window events run now and then.
void WalkFolder(const Path& walkableFolder, FolderVisitor& visitor);

}  // namespace cleaners
