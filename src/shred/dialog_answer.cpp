#include "shred/dialog_answer.h"

#include <algorithm>

namespace shred {

namespace {

template <class Char>
std::vector<std::basic_string<Char>> Split(std::basic_string_view<Char> answer) {
  std::vector<std::basic_string<Char>> parts;
  while (!answer.empty() && answer.front() != Char()) {
    const std::size_t end = std::min(answer.find(Char()), answer.size());
    parts.emplace_back(answer.substr(0, end));
    answer.remove_prefix(std::min(end + 1, answer.size()));
  }
  if (parts.size() < 2) return parts;
  std::basic_string<Char> folder = parts.front();
  if (folder.back() != Char('\\')) folder += Char('\\');
  parts.erase(parts.begin());
  for (std::basic_string<Char>& name : parts) name.insert(0, folder);
  return parts;
}

}  // namespace

std::vector<std::string> SplitDialogAnswer(std::string_view answer) { return Split(answer); }
std::vector<std::wstring> SplitDialogAnswer(std::wstring_view answer) { return Split(answer); }

bool IsWholeAnswer(std::string_view buffer) { return buffer.find(std::string_view("\0\0", 2)) != buffer.npos; }
bool IsWholeAnswer(std::wstring_view buffer) { return buffer.find(std::wstring_view(L"\0\0", 2)) != buffer.npos; }

}  // namespace shred
