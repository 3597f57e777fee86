#include "shred/list_file.h"

#include <algorithm>

namespace shred {

std::vector<std::string> ReadListFile(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    if (end < text.size() && line.ends_with('\r')) line.pop_back();
    std::erase(line, '\0');
    lines.push_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string ListFileText(const std::vector<std::string>& paths) {
  std::string text;
  for (const std::string& path : paths) text += path + "\r\n";
  return text;
}

}  // namespace shred
