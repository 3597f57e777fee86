// Removing what a folder holds, to any depth, and nothing outside of it.
#pragma once

#include "platform/open_folder.h"

namespace cleaners {
using namespace platform;

// Deletes every file in `folder`; with `removeSubFolders` also its subfolders, else only what they hold; with
// `removeFolder` the folder itself at the end. Goes on past whatever cannot be deleted and stops at the stop request.
//
// The walk stays inside: a link to a folder is removed as a link and never entered, and nothing happens when `folder` is
// empty, a root or itself a link. Window events run now and then.
void ClearFolderContents(const Path& folder, bool removeFolder, bool removeSubFolders);

// Clears a subfolder of `in` with all that lies in it, and removes it. `opened` is that subfolder.
void ClearAndRemove(const OpenFolder& in, const Path& folder, OpenFolder opened);

}  // namespace cleaners
