// What Explorer drops on a window.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

namespace shred {

struct DroppedFiles {
  POINT place;  // in the window that the message came to
  std::vector<std::string> paths;
};

// The content of a WM_DROPFILES message, which is freed.
DroppedFiles TakeDroppedFiles(WPARAM drop);

}  // namespace shred
