// What Explorer drops on a window.
#pragma once

#include <vector>

#include "platform/path.h"
#include "platform/win32.h"

namespace shred {
using namespace platform;

struct DroppedFiles {
  POINT place;  // in the window that the message came to
  std::vector<Path> paths;
};

// The content of a WM_DROPFILES message, which is freed.
DroppedFiles TakeDroppedFiles(WPARAM drop);

}  // namespace shred
