// The panel "Shredder" with what its user would put into its controls, for tests that have no window or no time for one.
#pragma once

#include "shred/fraShred.h"

namespace shred {

struct PanelForTests {
  explicit PanelForTests(MainWindow& window) : panel(window), lstFiles(panel.lstFiles) {}

  void SetLevels(const char* manual, const char* scheduled) {
    panel.txtLev.SetText(manual);
    panel.txtLevel.SetText(scheduled);
  }

  void Say(const char* text) { panel.txtMessage.SetText(text); }

  fraShred panel;
  ListBox& lstFiles;
};

}  // namespace shred
