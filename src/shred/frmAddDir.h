// The window "Quellix-Add Folder": a drive, the opened folder on it with the ones it lies in and those in it.
#pragma once

#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/path.h"
#include "shred/folder_lines.h"
#include "shred/frmAddDir_ids.h"

namespace shred {
using namespace platform;

class frmAddDir final : public Dialog {
 public:
  // Shows the window and returns the chosen folder once it is closed; empty when none was chosen. Window events run
  // meanwhile; `owner` takes no input.
  Path ShowModal(HWND owner);

 private:
  void OnInit() override;
  void OnClick(int id) override;
  void OnNotification(int id, int notification) override;
  bool OnKey(const MSG& message) override;

  void Open(const Path& folder);
  void OpenSelected();
  void ChangeDrive();
  void ShowDrive();
  void Add();
  void ChooseByLetter(char letter);
  void ShowWhatEnterDoes();

  ComboBox drvList{*this, IDC_drvList};
  ListBox dirList{*this, IDC_dirList};
  FolderLines shown_;
  Path chosen_;
};

}  // namespace shred
