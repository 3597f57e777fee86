// The sweep over a key's values that goes before the deletion of the whole key.
#pragma once

#include "platform/win32.h"

namespace cleaners {

// `status` is the outcome of opening the key; anything but ERROR_SUCCESS sweeps nothing. The index advances also after a
// deletion, so every second value stays, which is harmless because the key goes with all that is left. Ends at a stop
// request.
void SweepValues(HKEY key, LONG status);

}  // namespace cleaners
