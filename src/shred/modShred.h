// Destroying files and folders. A shred run takes one path after the other: the caller moves its progress bar and sets its
// texts between two calls. Window events run inside ShredFile and the folder procedures, so that what a caller walks may
// change under it.
#pragma once

#include <string>

#include "platform/path.h"

namespace shred {
using namespace platform;

// True when a file can be opened for reading; it is closed again at once. Never reports. Of a text: as users write it.
bool Validate(const Path& path);
bool Validate(WideView text);

// Overwrites the head of a file with the sequence of overwrite_sequence.h, whatever its length, and deletes it. Reports each
// failing statement as "modShred,DeleteFileShred", each item that cannot be written among them, and goes on with the next
// one: where the level is no number the file still gets the fixed runs, where it cannot be written it is still deleted. A
// read-only file, a link and a device are not written to.
//
// The failures of one file are one ReportBurst; a caller that holds one around its run makes the run's failures one.
void DeleteFileShred(const Path& path, const std::string& levelText);

// The step of a shred run for one path: a file that Validate accepts loses its attributes and is shredded, any other is
// skipped. Lets window events run now and then.
void ShredFile(const Path& path, const std::string& levelText);

// True when `path` names an existing folder. With `create`, a missing folder is made one level at a time; the result stays
// false even then. Never reports.
bool FolderCheck(const Path& path, bool create = false);
bool FolderCheck(WideView text, bool create = false);

// The folder procedures delete without overwriting, never report, and leave what cannot be deleted in its place. They
// touch nothing when the path is empty, a root, a link, or a folder that is or holds Windows, Program Files, the
// profile or the program's own folder; a link inside is removed as a link and never entered.

// Empties and removes the first subfolder of `folder`, as far as it holds no folder itself, and leaves the others. That is
// meant: RemoveFolderTree follows.
void ClearSubFolders(const Path& folder);

// Removes `folder` with everything in it, read-only files included. True when it is gone; false also when it was missing
// from the start.
bool RemoveFolderTree(const Path& folder);

// What "Shred Folder Now" does with one folder: its files, its subfolders, the whole tree.
void ShredFolder(const Path& folder);

}  // namespace shred
