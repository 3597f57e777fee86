// The panel "Shredder": the manual lists of files and folders, and the scheduled list.
#pragma once

#include "platform/controls.h"
#include "platform/dialog.h"
#include "shred/fraShred_ids.h"

class fraShred : public Dialog {
 public:
  fraShred();
  HWND Create(HWND parent);

  CheckBox chkOptions{*this, IDC_chkOptions};  // "Enable Schedule" of the scheduled list
  TextBox txtLevel{*this, IDC_txtLevel};       // security level of the scheduled list
  TextBox txtLev{*this, IDC_txtLev};           // security level of the manual lists
  ListBox lstFiles{*this, IDC_lstFiles};

 private:
  SpinButton UpDown1{*this, IDC_UpDown1, txtLev};
  SpinButton UpDown2{*this, IDC_UpDown2, txtLevel};
};
