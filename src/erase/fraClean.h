// The panel "Erase": the buttons that start and stop a run, its progress and its log.
#pragma once

#include "erase/erase_run.h"
#include "erase/fraClean_ids.h"
#include "platform/controls.h"
#include "platform/dialog.h"

namespace erase {
using namespace platform;

class fraClean : public Dialog {
 public:
  explicit fraClean(EraseRunHost& host) : host_(host) {}
  HWND Create(HWND parent);

  Button cmdClean{*this, IDC_cmdClean};
  Button CmdCleanReboot{*this, IDC_CmdCleanReboot};
  Button cmdStop{*this, IDC_cmdStop};
  ProgressBar PbarClean{*this, IDC_PbarClean};
  ListBox lstCln{*this, IDC_lstCln};

 private:
  void OnCommand(int id, int notification) override;

  EraseRunHost& host_;
};

}  // namespace erase
