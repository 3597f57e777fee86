#include "shred/folder_chain.h"

#include "platform/path_text.h"

namespace shred {
using namespace platform;

std::string DrivePart(std::string_view path) {
  const std::size_t colon = path.find(':');
  return colon == std::string_view::npos ? std::string() : std::string(path.substr(0, colon + 1));
}

std::vector<std::string> FolderChain(std::string_view path) {
  const std::string drive = DrivePart(path);
  const std::string rest = AppendBackslash(path).substr(drive.size());
  std::vector<std::string> chain;
  for (std::size_t slash = rest.find('\\', 1); slash != std::string::npos; slash = rest.find('\\', slash + 1))
    chain.push_back(drive + rest.substr(0, slash));
  return chain;
}

}  // namespace shred
