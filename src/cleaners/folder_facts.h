// What the system tells of a folder that is to be emptied or removed.
#pragma once

#include <vector>

#include "cleaners/folder_guard.h"
#include "cleaners/kept_folders.h"
#include "platform/path.h"

namespace cleaners {

// The path with links on the way followed and in short names, so that two spellings of one folder compare equal; as it is
// where the disk tells nothing.
Path Canonical(const Path& folder);

// The facts about `folder`; paths of `keep` may be empty.
FolderFacts FindFolderFacts(const Path& folder, const std::vector<Path>& keep);

// About one that the shredder's list or the registry names: it must not be, hold or lead to any folder to keep
// (kept_folders.h), nor the program's own.
FolderFacts FindFolderFacts(const Path& folder, Untold untold = Untold::Raises);

// Whether `folder` is or lies below one of `shared` by whatever path. The facts are those about it, and the folders to keep
// that they were asked with begin with `shared`.
bool LiesInShared(const Path& folder, const FolderFacts& facts, const std::vector<Path>& shared);

}  // namespace cleaners
