#include "shred/folder_lines.h"

#include <algorithm>

#include "platform/path_text.h"

namespace shred {
using namespace platform;

namespace {

constexpr std::size_t kIndent = 3;  // blanks a level

}  // namespace

FolderLines LinesOfFolder(std::string_view folder, const std::vector<std::string>& subfolders) {
  FolderLines result;
  std::string path;
  std::size_t depth = 0;
  const auto add = [&](const std::string& name, const std::string& full) {
    result.lines.push_back({std::string(kIndent * depth, ' ') + name, full});
  };
  for (std::size_t start = 0; start < folder.size(); ++depth) {
    const std::size_t end = std::min(folder.find('\\', start), folder.size());
    const std::string name(folder.substr(start, end - start));
    path = AppendBackslash(path.empty() ? name : path);
    if (depth > 0) path += name;
    add(depth == 0 ? path : name, path);
    start = end + 1;
  }
  result.opened = static_cast<int>(result.lines.size()) - 1;
  for (const std::string& name : subfolders) add(name, AppendBackslash(path) + name);
  return result;
}

}  // namespace shred
