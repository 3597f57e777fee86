// The least that a program with a dialog does, for comparison: common controls, one window, a message loop.
#include "bare_program.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  BeginBare();
  RunBare(CreateDialogParamA(instance, MAKEINTRESOURCEA(1), nullptr, &BareProcedure, 0));
  return 0;
}
