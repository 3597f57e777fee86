// The panel "Advance Settings": invisible mode, boss key, start-up options and the schedule. Its Click handlers keep the
// settings variables equal to the controls.
#pragma once

#include <array>

#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/main_window.h"

class fraScheduleManager : public Dialog {
 public:
  explicit fraScheduleManager(MainWindow& window) : window_(window) {}
  HWND Create(HWND parent);

  // The controls' share of loading: minutes box, picker, start-up boxes and schedule option, in that order. Raises for a
  // stored number that its control cannot show; what comes after it is then not loaded.
  void LoadGeneralSettings();

  // The restore label as at start-up, and "Displaying StartUP" in the status bar. It changes no panel.
  void ShowStartUpStatus();

  // Shows the stored boss key in the combo.
  void getBossKeySetting();

  void ClickScheduleEnabled();

  CheckBox chkShEnable;
  CheckBox chkRbt;
  CheckBox CHKieclose;
  std::array<CheckBox, 3> chkStartUp;
  std::array<OptionButton, 3> optSchedule;
  TimePicker dtpTime;
  TextBox txtMinutes;
  ComboBox cmbBoss;
  Label lblRestore;

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;
  void ClickStartUp(int index);
  void ClickSchedule(int index);
  void LoadSchedule();

  MainWindow& window_;
  SpinButton VSUpDown;
};
