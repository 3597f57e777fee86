// The least that a program with a dialog does, for comparison: common controls, one window, a message loop.
#include <windows.h>

#include <commctrl.h>

namespace {

INT_PTR CALLBACK Procedure(HWND, UINT message, WPARAM, LPARAM) {
  if (message == WM_CLOSE) ExitProcess(0);
  return FALSE;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
  InitCommonControlsEx(&controls);
  const HWND window = CreateDialogParamA(instance, MAKEINTRESOURCEA(1), nullptr, &Procedure, 0);
  ShowWindow(window, SW_SHOW);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageA(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}
