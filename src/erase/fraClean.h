// The panel "Erase": the buttons that start and stop a run, its progress and its log.
#pragma once

#include <string>

#include "erase/erase_run.h"
#include "erase/fraClean_ids.h"
#include "platform/asked_log.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/panel.h"

namespace erase {
using namespace platform;

class fraClean final : public Panel, public RunView {
 public:
  explicit fraClean(EraseRunHost& host) : Panel(IDD_fraClean, IDC_fraClean), host_(host) {}

  // RunView
  void ClearLog() override;
  void AddLogLine(const std::string& line) override;
  int ProgressValue() override { return PbarClean.Value(); }
  int ProgressMax() override { return PbarClean.Max(); }
  void SetProgressValue(int value) override { PbarClean.SetValue(value); }
  void SetProgressRange(int min, int max) override { PbarClean.SetRange(min, max); }
  void ShowProgress() override { PbarClean.SetVisible(true); }
  void EnableStopButton(bool enabled) override { cmdStop.SetEnabled(enabled); }

  // What the run in progress tells goes here: a line of it is a line of the log.
  Tally& RunTally() { return asked_.OfRun(); }
  void ForgetRuns() { asked_.Forget(); }

 private:
  void OnInit() override { asked_.Attach(lstCln.Handle()); }
  void BeforeFront() override { ClearLog(); }
  void AfterFront() override;
  void OnClick(int id) override;

  EraseRunHost& host_;
  Button cmdClean{*this, IDC_cmdClean};
  Button cmdStop{*this, IDC_cmdStop};
  ProgressBar PbarClean{*this, IDC_PbarClean};
  ListBox lstCln{*this, IDC_lstCln};
  AskedLog asked_;
};

}  // namespace erase
