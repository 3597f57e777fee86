// What the poll of the keyboard does, told from the keys' states.
#pragma once

#include <cstdint>

namespace automation {

// The answers of GetAsyncKeyState, one look at each key a poll: the high bit tells that the key is down, the low one that it
// was pressed since the look before.
struct PolledKeys {
  std::uint16_t boss = 0;
  std::uint16_t shift = 0;
  std::uint16_t ctrl = 0;
  std::uint16_t u = 0;
  std::uint16_t h = 0;
};

// In this order. Shift with the boss key also is the boss key: what it restores, it hides first.
struct PollActions {
  bool hide;         // boss key
  bool restore;      // Shift and boss key
  bool comeBack;     // Ctrl+U
  bool goInvisible;  // Ctrl+H, unless it is Ctrl+U
};

PollActions ActionsOf(const PolledKeys& keys);

}  // namespace automation
