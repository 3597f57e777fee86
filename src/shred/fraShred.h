// The panel "Shredder": the manual lists of files and folders, and the scheduled list.
#pragma once

#include "platform/controls.h"
#include "platform/dialog.h"

class fraShred : public Dialog {
 public:
  HWND Create(HWND parent);

  CheckBox chkOptions;  // "Enable Schedule" of the scheduled list
  TextBox txtLevel;     // security level of the scheduled list
  TextBox txtLev;       // security level of the manual lists
  ListBox lstFiles;

 private:
  void OnInit() override;

  SpinButton UpDown1;
  SpinButton UpDown2;
  ProgressBar progress_;
};
