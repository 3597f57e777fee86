#include "erase/fraClean.h"

#include "erase/fraClean_ids.h"
#include "platform/stop_request.h"

HWND fraClean::Create(HWND parent) { return Dialog::Create(IDD_fraClean, parent); }

void fraClean::OnInit() {
  cmdClean.Attach(Handle(), IDC_cmdClean);
  CmdCleanReboot.Attach(Handle(), IDC_CmdCleanReboot);
  cmdStop.Attach(Handle(), IDC_cmdStop);
  PbarClean.Attach(Handle(), IDC_PbarClean);
  lstCln.Attach(Handle(), IDC_lstCln);
  PbarClean.SetRange(0, 100);
}

void fraClean::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  if (id == IDC_cmdClean) RunEraseOnly(host_);
  if (id == IDC_CmdCleanReboot) RunEraseAndReboot(host_);
  if (id == IDC_cmdStop) StopErase = true;
}
