// The program's entry. It reads no command line.
#include "app/frmMain.h"
#include "app/single_instance.h"
#include "platform/message_pump.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);  // an empty drive is a failing statement, not a window
  ShowPrevInstance();
  InitControls();
  static frmMain window;
  SetMessageTranslator([](MSG& message) { return window.TranslateKey(message); });
  if (!window.Load(CreateInstanceWindow())) return 1;
  RunMessageLoop();
  return 0;
}
