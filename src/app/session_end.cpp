#include "app/session_end.h"

#include "platform/runtime_error.h"

namespace app {
using namespace platform;

namespace {
constexpr std::uint32_t kOnlyThisProgram = 1;  // ENDSESSION_CLOSEAPP
}

// The stop request is not cleared before the erase: after an earlier run it is still set, and the run skips every item.
// Meant.
void SessionEnd::Ask(std::uint32_t reasons) {
  if (erasing_) return;
  stopBefore_ = steps_.StopRequested();
  erased_ = false;
  if ((reasons & kOnlyThisProgram) == 0 && steps_.ErasesAtSessionEnd()) {
    erasing_ = true;
    resumeNext([this] { steps_.TellSystemOfWork(true); });
    resumeNext([this] { steps_.EraseBeforeSessionEnd(); });
    resumeNext([this] { steps_.TellSystemOfWork(false); });
    erasing_ = false;
    erased_ = true;
  }
  steps_.SetStopRequest(true);
  if (ends_) steps_.UnloadAtSessionEnd();
}

// Called off without an erase, the program is as it was: a stop request left behind would make the erase at the next end
// skip every item.
void SessionEnd::Decide(bool ends) {
  if (erasing_) {
    ends_ = ends;
    return;
  }
  if (ends) return steps_.UnloadAtSessionEnd();
  if (!erased_ && !steps_.IsRunInProgress()) steps_.SetStopRequest(stopBefore_);
}

}  // namespace app
