#include "shred/shred_list.h"

#include <algorithm>

namespace shred {
using namespace platform;

void ShredList::Add(const Path& path) {
  const int before = list_.ListCount();
  list_.AddItem(path.Shown());
  if (list_.ListCount() > before) collection_.push_back(path);
}

void ShredList::RemoveSelected() {
  const std::vector<int> lines = list_.Selected();
  const ListBox::Filling quietly(list_);
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
    const auto found = std::find_if(collection_.begin(), collection_.end(),
                                    [text = list_.Item(*line)](const Path& path) { return path.Shown() == text; });
    if (found != collection_.end()) collection_.erase(found);
    list_.RemoveItem(*line);
  }
}

void ShredList::Clear() {
  collection_.clear();
  list_.Clear();
}

std::vector<WideText> ShredList::LinesOfTheFileAlone() const {
  std::vector<WideText> known;
  for (const Path& path : collection_) known.push_back(path.Shown());
  std::sort(known.begin(), known.end());
  std::vector<WideText> lines;
  for (int line = 0; line < list_.ListCount(); ++line)
    if (!std::binary_search(known.begin(), known.end(), list_.Item(line))) lines.push_back(list_.Item(line));
  return lines;
}

void ShredList::RemoveFirst(int count) {
  if (count >= Count()) return Clear();
  const ListBox::Filling quietly(list_);
  for (int taken = 0; taken < count; ++taken) {
    const WideText text = collection_[static_cast<std::size_t>(taken)].Shown();
    for (int line = 0; line < list_.ListCount(); ++line) {
      if (list_.Item(line) != text) continue;
      list_.RemoveItem(line);
      break;
    }
  }
  collection_.erase(collection_.begin(), collection_.begin() + count);
}

}  // namespace shred
