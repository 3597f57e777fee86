// The lines of a folder list that shows one opened folder: the folders that it lies in, itself, and what lies in it, each a
// step further to the right.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace shred {

struct FolderLine {
  std::string text;  // indented
  std::string path;  // in full, without "\" behind it unless it is a root
};

struct FolderLines {
  std::vector<FolderLine> lines;
  int opened = 0;  // the opened folder's line
};

// `folder` is a full path on a drive, with or without "\" behind it; `subfolders` are the names in it, in their order.
FolderLines LinesOfFolder(std::string_view folder, const std::vector<std::string>& subfolders);

}  // namespace shred
