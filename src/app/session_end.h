// The end of the Windows session, without a window: the question whether it may end, the erase before it, the end itself or
// its calling off.
#pragma once

#include <cstdint>

namespace app {

class SessionEndSteps {
 public:
  virtual bool ErasesAtSessionEnd() = 0;
  // Windows ends a program that shows no window and does not answer within five seconds, unless it has said why.
  virtual void TellSystemOfWork(bool atWork) = 0;
  virtual void EraseBeforeSessionEnd() = 0;
  virtual bool IsRunInProgress() = 0;
  virtual bool StopRequested() = 0;
  virtual void SetStopRequest(bool stop) = 0;
  virtual void UnloadAtSessionEnd() = 0;

 protected:
  ~SessionEndSteps() = default;
};

class SessionEnd {
 public:
  explicit SessionEnd(SessionEndSteps& steps) : steps_(steps) {}

  // WM_QUERYENDSESSION with its lParam. The end is never refused. The erase belongs to a session that ends, not to an
  // installer that asks programs to close; it is one run, which a second question in the middle of it does not join.
  void Ask(std::uint32_t reasons);

  // WM_ENDSESSION. What comes in the middle of the erase waits for its end.
  void Decide(bool ends);

 private:
  SessionEndSteps& steps_;
  bool erasing_ = false;
  bool erased_ = false;
  bool ends_ = false;
  bool stopBefore_ = false;
};

}  // namespace app
