#include "shred/folder_lines.h"

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

}  // namespace shred
