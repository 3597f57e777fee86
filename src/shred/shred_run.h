// What a shred run counts, tells and keeps, told from how each file turned out.
#pragma once

#include <string>

namespace shred {

// One file of the run.
struct ShreddedFile {
  bool wasThere;  // before its turn
  bool isThere;   // after it
  bool failed;    // something was reported meanwhile
};

class ShredRun {
 public:
  explicit ShredRun(int count) : count_(count) {}

  // The next file has had its turn.
  void Add(const ShreddedFile& file);

  // True while there is a file left and nobody asked the run to stop.
  bool GoesOn(bool stopRequested) const { return steps_ < count_ && !stopRequested; }

  // Files that have had their turn: the place of the bar, and how many leave the list from its front.
  int Steps() const { return steps_; }
  int Count() const { return count_; }

  // Files that were there, are gone and were overwritten without an error on the way.
  int Shredded() const { return shredded_; }

 private:
  int count_;
  int steps_ = 0;
  int shredded_ = 0;
};

// The two messages before a manual run. Both name a level: the first that of the manual list, by which the files are
// shredded, the second that of the scheduled list, which is the one that every erase run uses.
std::string MessageBefore(const std::string& manualLevel);
std::string SecondMessageBefore(const std::string& scheduledLevel);

// "3 files shredded.", "1 file shredded." or, when that is not true of all, "2 of 3 files shredded."
std::string FilesShredded(int done, int count);
std::string FoldersDeleted(int done, int count);

// Beside the list; empty for none.
std::string FilesReady(int count);

}  // namespace shred
