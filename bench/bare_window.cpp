// The program's first window and nothing of the program, for comparison: the same two dialogs of the same resources, shown.
#include "app/fraMain_ids.h"
#include "app/frmMain_ids.h"
#include "app/quellix_ids.h"
#include "bare_program.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  BeginBare();
  WNDCLASSA main{};
  main.lpfnWndProc = DefDlgProcA;
  main.cbWndExtra = DLGWINDOWEXTRA;
  main.hInstance = instance;
  main.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_quellix));
  main.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  main.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  main.lpszClassName = "frmMain";
  RegisterClassA(&main);
  const HWND window = CreateDialogParamA(instance, MAKEINTRESOURCEA(IDD_frmMain), nullptr, &BareProcedure, 0);
  const HWND panel = CreateDialogParamA(instance, MAKEINTRESOURCEA(IDD_fraMain), window, &BareProcedure, 0);
  RECT place{};
  GetWindowRect(GetDlgItem(window, IDC_panel), &place);
  MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
  SetWindowPos(panel, HWND_TOP, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
  RunBare(window);
  return 0;
}
