#include "shred/folder_lines.h"

#include <algorithm>
#include <cstddef>

#include "shred/folder_chain.h"

namespace shred {
using namespace platform;

namespace {

constexpr std::size_t kIndent = 3;  // blanks a level

}  // namespace

FolderLines LinesOfFolder(const Path& folder, const std::vector<WideText>& subfolders) {
  FolderLines result;
  std::size_t depth = 0;
  const auto add = [&](const Path& path) {
    result.lines.push_back(
        {WideText(kIndent * depth, ' ').append(path.IsRoot() ? path.Shown() : WideText(path.Name())), path});
  };
  std::vector<Path> chain = FolderChain(folder);
  add(chain.empty() ? folder : chain.front().Parent());
  for (const Path& level : chain) ++depth, add(level);
  result.opened = static_cast<int>(depth);
  ++depth;
  for (const WideText& name : subfolders) add(folder / name);
  return result;
}

int NextLineWith(const FolderLines& lines, int from, WideView letter) {
  const int count = static_cast<int>(lines.lines.size());
  for (int step = 1; step <= count; ++step) {
    const int line = (from + step) % count;
    const WideView text = lines.lines[static_cast<std::size_t>(line)].text;
    const std::size_t name = std::min(text.find_first_not_of(' '), text.size());
    if (EqualIgnoringCase(text.substr(name, letter.size()), letter)) return line;
  }
  return -1;
}

}  // namespace shred
