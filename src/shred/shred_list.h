// A list of files or folders to shred: what the user sees in a list box, and the collection that a run walks. They hold the
// same paths in the same order, unless the list was filled from its file alone.
#pragma once

#include <map>
#include <vector>

#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/path.h"

namespace shred {
using namespace platform;

class ShredList {
 public:
  explicit ShredList(ListBox& list) : list_(list) {}

  // A path that the list box does not take (Windows 9x has room for 32,767) is not in the collection either: nothing is
  // shredded that the user does not see.
  void Add(const Path& path);

  // The chosen lines go, and with each the first path of the collection that reads like it.
  void RemoveSelected();
  void Clear();

  // A path of the collection that is gone. It and its line, the first one that reads like it, leave at RemoveGone, all at
  // once; to Lines it has left already.
  void MarkGone(int place) { gone_.push_back(place); }
  void RemoveGone();
  std::vector<WideText> Lines() const;

  ListBox& List() { return list_; }
  const std::vector<Path>& Collection() const { return collection_; }
  int Count() const { return static_cast<int>(collection_.size()); }

 private:
  ListBox& list_;
  std::map<WideText, int> GoneLines() const;  // how many of each

  std::vector<Path> collection_;
  std::vector<int> gone_;  // places in the collection, upwards
};

}  // namespace shred
