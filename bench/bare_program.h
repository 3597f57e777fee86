// What the programs that the start is compared with share: common controls, a dialog procedure that does nothing, the loop.
#pragma once

#include <windows.h>

#include <commctrl.h>

inline INT_PTR CALLBACK BareProcedure(HWND, UINT message, WPARAM, LPARAM) {
  if (message == WM_CLOSE) ExitProcess(0);
  return FALSE;
}

inline void BeginBare() {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
  InitCommonControlsEx(&controls);
}

// Shows the window and works off messages until the process ends.
inline void RunBare(HWND window) {
  ShowWindow(window, SW_SHOW);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageA(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}
