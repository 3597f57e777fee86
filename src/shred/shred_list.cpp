#include "shred/shred_list.h"

#include <algorithm>
#include <cstddef>
#include <string>

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
  gone_.clear();
  list_.Clear();
}

std::map<WideText, int> ShredList::GoneLines() const {
  std::map<WideText, int> lines;
  for (const int place : gone_) ++lines[collection_[static_cast<std::size_t>(place)].Shown()];
  return lines;
}

std::vector<WideText> ShredList::Lines() const {
  std::map<WideText, int> gone = GoneLines();
  std::vector<WideText> lines;
  for (int line = 0; line < list_.ListCount(); ++line) {
    const auto found = gone.find(list_.Item(line));
    if (found == gone.end() || found->second-- <= 0) lines.push_back(list_.Item(line));
  }
  return lines;
}

void ShredList::RemoveGone() {
  if (static_cast<int>(gone_.size()) == list_.ListCount()) return Clear();
  std::map<WideText, int> gone = GoneLines();
  const ListBox::Filling quietly(list_);
  for (int line = 0; line < list_.ListCount();) {
    const auto found = gone.find(list_.Item(line));
    if (found != gone.end() && found->second-- > 0)
      list_.RemoveItem(line);
    else
      ++line;
  }
  for (auto place = gone_.rbegin(); place != gone_.rend(); ++place) collection_.erase(collection_.begin() + *place);
  gone_.clear();
}

}  // namespace shred
