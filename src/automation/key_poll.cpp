#include "automation/key_poll.h"

namespace automation {

namespace {

// A pair of keys counts where their answers have a bit in common.
bool Pair(std::uint16_t one, std::uint16_t other) { return (one & other) != 0; }

}  // namespace

PollActions ActionsOf(const PolledKeys& keys) {
  const bool comeBack = Pair(keys.ctrl, keys.u);
  return {keys.boss != 0, Pair(keys.shift, keys.boss), comeBack, !comeBack && Pair(keys.ctrl, keys.h)};
}

}  // namespace automation
