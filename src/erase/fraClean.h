// The panel "Erase": the buttons that start and stop a run, its progress and its log.
#pragma once

#include "erase/erase_run.h"
#include "platform/controls.h"
#include "platform/dialog.h"

class fraClean : public Dialog {
 public:
  explicit fraClean(EraseRunHost& host) : host_(host) {}
  HWND Create(HWND parent);

  Button cmdClean;
  Button CmdCleanReboot;
  Button cmdStop;
  ProgressBar PbarClean;
  ListBox lstCln;

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;

  EraseRunHost& host_;
};
