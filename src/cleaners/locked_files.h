// A file that somebody has open for a moment, a virus scanner for example, is tried again: three times in all, and no longer
// than two seconds for all files of a run.
#pragma once

#include <cstdint>

namespace cleaners {

class Patience {
 public:
  static constexpr int kTries = 3;
  static constexpr std::uint32_t kPause = 100;    // milliseconds before another try
  static constexpr std::uint32_t kOfARun = 2000;  // milliseconds

  void BeginRun() { spent_ = 0; }

  // Whether there is to be another try after so many. The pause before it counts as spent.
  bool MayTryAgain(int tries) {
    if (tries >= kTries || spent_ + kPause > kOfARun) return false;
    spent_ += kPause;
    return true;
  }

 private:
  std::uint32_t spent_ = 0;
};

inline Patience LockedFiles;

// Does what `attempt` does to a file until it is true or fails for another reason than that somebody has the file open.
// False with the reason of the last try in GetLastError. No window events run meanwhile.
bool TryWhileLocked(bool (*attempt)(void* about), void* about);

template <class Attempt>
bool TryWhileLocked(Attempt attempt) {
  return TryWhileLocked([](void* about) { return (*static_cast<Attempt*>(about))(); }, &attempt);
}

}  // namespace cleaners
