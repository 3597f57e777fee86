// Whether an erase run is in progress. Every way to start one asks first: a press, a tick of the schedule, the start-up, the
// end of the session. It begins with the closing of browsers, which goes before the work, and ends when the buttons are
// themselves again.
#pragma once

namespace erase {

inline bool RunInProgress = false;

// A run, as long as it lives.
class RunScope {
 public:
  RunScope() { RunInProgress = true; }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;
  ~RunScope() { RunInProgress = false; }
};

}  // namespace erase
