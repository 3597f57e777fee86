// A list of files to shred: what the user sees in a list box, and the collection that a run walks. They hold the same
// paths in the same order, unless the list was filled from its file alone.
#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"

namespace shred {
using namespace platform;

class ShredList {
 public:
  explicit ShredList(ListBox& list) : list_(list) {}

  // A path that the list box does not take (Windows 9x has room for 32,767) is not in the collection either: nothing is
  // shredded that the user does not see.
  void Add(const std::string& path);

  // The chosen lines go, and with each the first path of the collection that reads like it.
  void RemoveSelected();
  void Clear();

  // The lines that the collection does not know.
  std::vector<std::string> LinesOfTheFileAlone() const;

  // The first `count` paths of the collection and as many lines; everything when that is all there is.
  void RemoveFirst(int count);

  ListBox& List() { return list_; }
  const std::vector<std::string>& Collection() const { return collection_; }
  int Count() const { return static_cast<int>(collection_.size()); }

 private:
  ListBox& list_;
  std::vector<std::string> collection_;
};

}  // namespace shred
