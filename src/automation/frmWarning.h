// The window "Warning", shown before the program goes invisible.
#pragma once

#include "automation/frmWarning_ids.h"
#include "platform/controls.h"
#include "platform/dialog.h"

namespace automation {
using namespace platform;

class frmWarning final : public Dialog {
 public:
  // Shows the window and returns when it is closed. Window events run meanwhile; `owner` takes no input, and the window is
  // not to be shown a second time.
  void ShowModal(HWND owner);

 private:
  void OnInit() override;
  void OnClick(int id) override;

  Label lblWarning{*this, IDC_lblWarning};
  CheckBox chkWarning{*this, IDC_chkWarning};
};

}  // namespace automation
