#include "shred/dialog_answer.h"

#include <algorithm>

namespace shred {
using namespace platform;

namespace {

// The texts between the NUL characters.
std::vector<WideView> Texts(WideView answer) {
  std::vector<WideView> texts;
  while (!answer.empty() && answer.front() != WideChar()) {
    const std::size_t end = std::min(answer.find(WideChar()), answer.size());
    texts.push_back(answer.substr(0, end));
    answer.remove_prefix(std::min(end + 1, answer.size()));
  }
  return texts;
}

// A name from the dialog's list is taken as it is; what somebody typed may be a path.
Path FileIn(const Path& folder, WideView name) {
  if (name.ends_with('\\') || name.ends_with('/')) return {};  // of a folder
  const Path full = SpelledPath(name);
  if (!full.IsEmpty()) return full;
  if (LeadsToItself(name)) return folder / name;
  return SplitRelative(name).from == Wide<".">() ? folder.Resolve(name) : Path();
}

}  // namespace

std::vector<Path> SplitDialogAnswer(WideView answer) {
  std::vector<WideView> texts = Texts(answer);
  Path folder;
  if (texts.size() > 1) {
    folder = SpelledPath(texts.front());
    texts.erase(texts.begin());
  }
  std::vector<Path> files;
  for (const WideView text : texts)
    if (const Path file = FileIn(folder, text); !file.IsEmpty()) files.push_back(file);
  return files;
}

bool IsWholeAnswer(WideView buffer) { return buffer.find(Wide<"\0\0">()) != WideView::npos; }

}  // namespace shred
