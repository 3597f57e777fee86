// What a shred run counts, tells and keeps, told from how each file turned out.
#pragma once

#include <string>

#include "cleaners/folder_guard.h"

namespace shred {

// Whether there is a file. Out of reach is one that nobody can tell of: its disk is not in, its share is down, its folder is
// missing.
enum class Presence { There, Gone, OutOfReach };

// One file of the run.
struct ShreddedFile {
  Presence before;  // its turn
  Presence after;
  std::string failure;  // what went wrong meanwhile, first of all; empty for nothing
};

// What is gone leaves its list, whoever deleted it; what is left, or may be, is to be shredded another time.
inline bool LeavesTheList(const ShreddedFile& file) { return file.after == Presence::Gone; }

class ShredRun {
 public:
  explicit ShredRun(int count) : count_(count) {}

  // The next file has had its turn.
  void Add(const ShreddedFile& file, const std::string& path);

  // True while there is a file left and nobody asked the run to stop.
  bool GoesOn(bool stopRequested) const { return steps_ < count_ && !stopRequested; }

  // Files that have had their turn: the place of the bar.
  int Steps() const { return steps_; }
  int Count() const { return count_; }

  // How many were shredded, and what became of the first that was not.
  std::string Outcome() const;

 private:
  int count_;
  int steps_ = 0;
  int shredded_ = 0;  // were there, are gone and were overwritten without an error on the way
  std::string firstNotShredded_;
};

// The two messages before a manual run. Both name a level: the first that of the manual list, by which the files are
// shredded, the second that of the scheduled list, which is the one that every erase run uses.
std::string MessageBefore(const std::string& manualLevel);
std::string SecondMessageBefore(const std::string& scheduledLevel);

// "3 files shredded.", "1 file shredded." or, when that is not true of all, "2 of 3 files shredded."
std::string FilesShredded(int done, int count);
std::string FoldersDeleted(int done, int count);

// Why a folder was refused.
std::string NeverShredded(const std::string& folder, cleaners::FolderRefusal refusal);

// The scheduled list, from which the next start would not know what was changed in this one.
std::string ListNotSaved(const std::string& reason);

// Beside the list; empty for none.
std::string FilesReady(int count);

}  // namespace shred
