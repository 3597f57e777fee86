// Tests of files and folders before they are destroyed. They never report: a failure yields false.
#pragma once

#include <string>

// True when a file can be opened for reading; it is closed again at once.
bool Validate(const std::string& path);

// True when `path` names an existing folder, with or without "\" behind it. With `create`, a missing folder is made one
// level at a time; the result stays false even then.
bool FolderCheck(const std::string& path, bool create = false);
