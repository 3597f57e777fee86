#include "app/front_window.h"

namespace app {

namespace {

struct OwnedWindow {
  HWND owner;
  HWND found;
};

BOOL CALLBACK LookForOpenBox(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<OwnedWindow*>(parameter);
  if (::GetWindow(window, GW_OWNER) != search.owner || !::IsWindowVisible(window) || !::IsWindowEnabled(window)) return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

HWND WindowToBringForward(HWND mainWindow) {
  if (::IsWindowEnabled(mainWindow)) return mainWindow;
  OwnedWindow search{mainWindow, mainWindow};
  ::EnumWindows(&LookForOpenBox, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace app
