// Folders on the shredder's list: whether one is there, and its removal with everything in it. Window events run inside the
// removal, so that what a caller walks may change under it.
#pragma once

#include "cleaners/folder_guard.h"
#include "platform/path.h"

namespace shred {
using namespace platform;

// True when `path` names an existing folder. With `create`, a missing folder is made one level at a time; the result stays
// false even then. Never reports.
bool FolderCheck(const Path& path, bool create = false);

// The folder procedures delete without overwriting, never report, and leave what cannot be deleted in its place. They
// touch nothing when the path is empty, a root, a link, or a folder that is or holds Windows, Program Files, the
// profile or the program's own folder; a link inside is removed as a link and never entered.

// Empties and removes the first subfolder of `folder`, as far as it holds no folder itself, and leaves the others to
// RemoveFolderTree, which follows.
void ClearSubFolders(const Path& folder);

// Removes `folder` with everything in it, read-only files included. True when it is gone; false also when it was missing
// from the start.
bool RemoveFolderTree(const Path& folder);

// What "Shred Folder Now" does with one folder: its files, its subfolders, the whole tree. Gives why it touches nothing.
cleaners::FolderRefusal ShredFolder(const Path& folder);

}  // namespace shred
