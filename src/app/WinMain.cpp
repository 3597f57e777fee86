// The program's entry. It reads no command line.
#include "app/frmMain.h"
#include "app/single_instance.h"
#include "platform/controls.h"
#include "platform/hardening.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  platform::HardenProcess();
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);  // an empty drive is a failing statement, not a window
  HWND instance = nullptr;
  {
    const app::StartTurn turn;
    app::ShowPrevInstance();
    platform::InitControls();
    instance = app::CreateInstanceWindow();
  }
  static app::frmMain window;
  platform::SetMessageTranslator([](MSG& message) { return window.TranslateKey(message); });
  if (!window.Load(instance)) {
    platform::ShowMessage("Quellix cannot show its window. Please close some programs and start Quellix again.",
                          MB_ICONSTOP);
    return 1;
  }
  platform::RunMessageLoop();
  return 0;
}
