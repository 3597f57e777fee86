// The lines of a folder list that shows one opened folder: the folders that it lies in, itself, and what lies in it, each a
// step further to the right.
#pragma once

#include <vector>

#include "platform/path.h"

namespace shred {
using namespace platform;

struct FolderLine {
  WideText text;  // indented
  Path path;
};

struct FolderLines {
  std::vector<FolderLine> lines;
  int opened = 0;  // the opened folder's line
};

// `subfolders` are the names in the folder, in their order.
FolderLines LinesOfFolder(const Path& folder, const std::vector<WideText>& subfolders);

// The next line after `from`, or from the top again, whose folder's name begins with the letter, ignoring case; -1 for none.
int NextLineWith(const FolderLines& lines, int from, WideView letter);

}  // namespace shred
