// The program's entry. It reads no command line.
#include "app/frmMain.h"
#include "app/single_instance.h"
#include "platform/app_title.h"
#include "platform/controls.h"
#include "platform/hardening.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"

namespace app {
namespace {

void Start() {
  HWND instance = nullptr;
  {
    const StartTurn turn;
    ShowPrevInstance();
    platform::InitControls();
    instance = CreateInstanceWindow();
  }
  static frmMain window;
  platform::SetMessageTranslator([](MSG& message) { return window.TranslateKey(message); });
  if (!window.Load(instance)) platform::RaiseLastError();
}

}  // namespace
}  // namespace app

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  platform::quietly([] { platform::HardenProcess(); });
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);  // an empty drive is a failing statement, not a window
  if (platform::failureOf([] { app::Start(); })) {
    // By the system's own call: there may be no memory for more.
    ::MessageBoxA(nullptr, "Quellix cannot show its window. Please close some programs and start Quellix again.",
                  platform::AppTitle.c_str(), MB_ICONSTOP);
    return 1;
  }
  platform::RunMessageLoop();
  return 0;
}
