#include "shred/fraShred.h"

namespace {
constexpr int kLevelAtStart = 50;
constexpr int kHighestLevel = 100;
}  // namespace

fraShred::fraShred() {
  for (SpinButton* spin : {&UpDown1, &UpDown2}) {
    spin->SetRange(0, kHighestLevel);
    spin->SetValue(kLevelAtStart);  // and writes it into the level box
  }
}

HWND fraShred::Create(HWND parent) { return Dialog::Create(IDD_fraShred, parent); }
