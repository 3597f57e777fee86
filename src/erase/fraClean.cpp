#include "erase/fraClean.h"

#include "platform/stop_request.h"

namespace erase {
using namespace platform;

// What was told of the lines goes with them.
void fraClean::ClearLog() {
  asked_.Clear();
  lstCln.Clear();
}

void fraClean::AddLogLine(const std::string& line) {
  RunTally().AddLine(line.empty());
  lstCln.AddItem(line);
  lstCln.ShowLast();
}

// The bar of the run before, and that of a run in progress: no button ever reads "Stop", so it goes at every visit. Meant;
// the next step of a run fills a bar that is hidden.
void fraClean::AfterFront() {
  if (cmdClean.Text() != "Stop") PbarClean.SetVisible(false);
}

void fraClean::OnClick(int id) {
  if (id == IDC_cmdClean) RunEraseOnly(host_);
  if (id == IDC_CmdCleanReboot) RunEraseAndReboot(host_);
  if (id == IDC_cmdStop) StopErase = true;
}

}  // namespace erase
