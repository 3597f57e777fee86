// The program's first window and nothing of the program, for comparison: the same two dialogs of the same resources, shown.
#include <windows.h>

#include <commctrl.h>

#include "app/fraMain_ids.h"
#include "app/frmMain_ids.h"
#include "app/quellix_ids.h"

namespace {

INT_PTR CALLBACK Procedure(HWND, UINT message, WPARAM, LPARAM) {
  if (message == WM_CLOSE) ExitProcess(0);
  return FALSE;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSA main{};
  main.lpfnWndProc = DefDlgProcA;
  main.cbWndExtra = DLGWINDOWEXTRA;
  main.hInstance = instance;
  main.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_quellix));
  main.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  main.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  main.lpszClassName = "frmMain";
  RegisterClassA(&main);
  const HWND window = CreateDialogParamA(instance, MAKEINTRESOURCEA(IDD_frmMain), nullptr, &Procedure, 0);
  const HWND panel = CreateDialogParamA(instance, MAKEINTRESOURCEA(IDD_fraMain), window, &Procedure, 0);
  RECT place{};
  GetWindowRect(GetDlgItem(window, IDC_panel), &place);
  MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
  SetWindowPos(panel, HWND_TOP, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
  ShowWindow(window, SW_SHOW);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageA(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}
