#include "shred/fraShred.h"

#include "shred/fraShred_ids.h"

namespace {
constexpr int kLevelAtStart = 50;
constexpr int kHighestLevel = 100;
}  // namespace

HWND fraShred::Create(HWND parent) { return Dialog::Create(IDD_fraShred, parent); }

void fraShred::OnInit() {
  chkOptions.Attach(Handle(), IDC_chkOptions);
  txtLevel.Attach(Handle(), IDC_txtLevel);
  txtLev.Attach(Handle(), IDC_txtLev);
  lstFiles.Attach(Handle(), IDC_lstFiles);
  progress_.Attach(Handle(), IDC_PbarShred);
  UpDown1.Attach(Handle(), IDC_UpDown1);
  UpDown2.Attach(Handle(), IDC_UpDown2);
  for (SpinButton* spin : {&UpDown1, &UpDown2}) {
    spin->SetRange(0, kHighestLevel);
    spin->SetValue(kLevelAtStart);  // and writes it into the level box
  }
}
