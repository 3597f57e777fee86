// A walk through everything below a folder that never leaves it, on whatever errand.
#pragma once

#include <string>

#include "platform/native_files.h"

namespace cleaners {
using namespace platform;

// What a walk does with what it meets.
class FolderVisitor {
 public:
  // True ends the walk at once.
  virtual bool IsOver() = 0;

  virtual void AtFile(const NativePath& path, const FolderEntry& entry) = 0;

  // A subfolder, after everything below it; its path ends in "\" then. Also a link to a folder, whose path ends in its name:
  // removing it as a folder removes the link alone.
  virtual void AtFolder(const NativePath& path) = 0;

 protected:
  ~FolderVisitor() = default;
};

// The path to walk through, with its "\"; empty when `folder` must not be entered: a relative path, a root, a link, or no
// folder at all.
NativePath WalkableFolder(const std::string& folder);

// Visits everything below a folder from the inside out, links to folders as links. The listing of a folder is closed when
// its turn comes, that of the folder itself at the end. Window events run now and then.
void WalkFolder(const NativePath& walkableFolder, FolderVisitor& visitor);

}  // namespace cleaners
