// What a message of the notification icon asks for.
#pragma once

#include <cstdint>

namespace app {

enum class TrayAction { None, RestoreWindow, PopupMenu };

constexpr unsigned kTrayIconId = 1;

// The icon's callback message is 512, which is also the number of real mouse moves. A callback carries the icon's
// identifier and a mouse message below 65536; a real move carries the pressed buttons and two coordinates, and looks like
// a callback while the left button is down in the topmost row. It is a move where those coordinates are the mouse's own:
// `mouse` is its place in the window, in the form of a move's lParam. Whether the button is down tells less: a drag that
// ends over another program leaves it down for this one.
inline TrayAction TrayActionOf(std::uintptr_t wParam, std::uintptr_t lParam, std::uintptr_t mouse) {
  constexpr std::uintptr_t kLeftUp = 514, kLeftDouble = 515, kRightUp = 517;
  if (wParam != kTrayIconId || lParam == mouse) return TrayAction::None;
  if (lParam == kLeftUp || lParam == kLeftDouble) return TrayAction::RestoreWindow;
  if (lParam == kRightUp) return TrayAction::PopupMenu;
  return TrayAction::None;
}

}  // namespace app
