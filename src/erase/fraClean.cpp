#include "erase/fraClean.h"

#include "platform/stop_request.h"

namespace erase {
using namespace platform;

HWND fraClean::Create(HWND parent) { return Dialog::Create(IDD_fraClean, parent); }

void fraClean::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  if (id == IDC_cmdClean) RunEraseOnly(host_);
  if (id == IDC_CmdCleanReboot) RunEraseAndReboot(host_);
  if (id == IDC_cmdStop) StopErase = true;
}

}  // namespace erase
