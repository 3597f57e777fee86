// Whether an erase run is in progress. Every way to start one asks first: a press, a tick of the schedule, the start-up, the
// end of the session. It begins with the closing of browsers, which goes before the work, and ends when the buttons are
// themselves again.
#pragma once

#include <utility>

namespace erase {

inline bool RunInProgress = false;

// A run, as long as it lives. That of the session's end may lie within another one.
class RunScope {
 public:
  RunScope() : before_(std::exchange(RunInProgress, true)) {}
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;
  ~RunScope() { RunInProgress = before_; }

 private:
  bool before_;
};

}  // namespace erase
