// What a message of the notification icon asks for.
#pragma once

#include <cstdint>

namespace app {

enum class TrayAction { None, RestoreWindow, PopupMenu };

constexpr unsigned kTrayIconId = 1;

// The icon's callback message is 512, which is also the number of real mouse moves. A callback carries the icon's
// identifier and a mouse message below 65536; a real move carries the pressed buttons and two coordinates, and looks like
// a callback only while the left button is down in the topmost row, which `leftButtonDown` tells.
inline TrayAction TrayActionOf(std::uintptr_t wParam, std::uintptr_t lParam, bool leftButtonDown) {
  constexpr std::uintptr_t kLeftUp = 514, kLeftDouble = 515, kRightUp = 517;
  if (wParam != kTrayIconId) return TrayAction::None;
  if (lParam == kLeftDouble) return TrayAction::RestoreWindow;  // the second press of the button is down by then
  if (leftButtonDown) return TrayAction::None;
  if (lParam == kLeftUp) return TrayAction::RestoreWindow;
  if (lParam == kRightUp) return TrayAction::PopupMenu;
  return TrayAction::None;
}

}  // namespace app
