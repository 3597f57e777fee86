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

void ShredList::Remove(int place) {
  const auto path = collection_.begin() + place;
  const WideText text = path->Shown();
  int line = 0;
  while (line < list_.ListCount() && list_.Item(line) != text) ++line;
  list_.RemoveItem(line);
  collection_.erase(path);
}

}  // namespace shred
