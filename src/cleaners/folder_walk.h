// A walk through everything below a folder that never leaves it, on whatever errand.
#pragma once

#include "platform/native_files.h"
#include "platform/open_folder.h"

namespace cleaners {
using namespace platform;

// What a walk does with what it meets. `in` is the folder that it lies in, which is open: what is to be deleted is deleted
// through it.
class FolderVisitor {
 public:
  // True ends the walk at once.
  virtual bool IsOver() = 0;

  virtual void AtFile(const OpenFolder& in, const Path& path, const FolderEntry& entry) = 0;

  // A subfolder, after everything below it.
  virtual void AtFolder(const OpenFolder& in, const Path& path) = 0;

  // A link to a folder: removing it as a folder removes the link alone.
  virtual void AtLink(const OpenFolder& in, const Path& path) { AtFolder(in, path); }

 protected:
  ~FolderVisitor() = default;
};

// None when `folder` must not be entered: a root, a link, or no folder at all.
OpenFolder OpenForWalk(const Path& folder);

// Visits everything below a folder, which `opened` is, from the inside out, links to folders as links. Each subfolder is
// closed when its turn comes, the folder itself at the end. Window events run now and then; a folder that is no longer at
// its path after them is left as it is. True when the folder was visited to its end and was still at its path then.
bool WalkFolder(const Path& folder, OpenFolder opened, FolderVisitor& visitor);

}  // namespace cleaners
