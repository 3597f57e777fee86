#include "shred/dialog_answer.h"

#include <algorithm>

#include "platform/path_text.h"

std::vector<std::string> SplitDialogAnswer(std::string_view answer) {
  std::vector<std::string> parts;
  while (!answer.empty() && answer.front() != '\0') {
    const std::size_t end = std::min(answer.find('\0'), answer.size());
    parts.emplace_back(answer.substr(0, end));
    answer.remove_prefix(std::min(end + 1, answer.size()));
  }
  if (parts.size() < 2) return parts;
  const std::string folder = AppendBackslash(parts.front());
  parts.erase(parts.begin());
  for (std::string& name : parts) name.insert(0, folder);
  return parts;
}

bool IsWholeAnswer(std::string_view buffer) { return buffer.find(std::string_view("\0", 2)) != std::string_view::npos; }
