// The panel "Advance Settings": invisible mode, boss key, start-up options and the schedule. Its Click handlers keep the
// settings variables equal to the controls.
#pragma once

#include <array>

#include "automation/fraScheduleManager_ids.h"
#include "automation/schedule_tick.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/main_window.h"

namespace automation {
using namespace platform;

class fraScheduleManager : public Dialog {
 public:
  explicit fraScheduleManager(MainWindow& window);
  HWND Create(HWND parent);

  // The controls' share of loading: minutes box, picker, start-up boxes and schedule option, in that order. Raises for a
  // stored number that its control cannot show; what comes after it is then not loaded.
  void LoadGeneralSettings();

  // The restore label as at start-up, and "Displaying StartUP" in the status bar. It changes no panel.
  void ShowStartUpStatus();

  // Shows the stored boss key in the combo.
  void getBossKeySetting();

  void ClickScheduleEnabled();

  // What the scheduler's tick looks at, as it is now.
  ScheduleFacts Facts() const;

  CheckBox chkShEnable{*this, IDC_chkShEnable};
  CheckBox chkRbt{*this, IDC_chkRbt};
  CheckBox CHKieclose{*this, IDC_CHKieclose};
  std::array<CheckBox, 3> chkStartUp{{{*this, IDC_chkStartUp_0}, {*this, IDC_chkStartUp_1}, {*this, IDC_chkStartUp_2}}};
  TimePicker dtpTime{*this, IDC_dtpTime};
  TextBox txtMinutes{*this, IDC_txtMinutes};
  ComboBox cmbBoss{*this, IDC_cmbBoss};
  Label lblRestore{*this, IDC_lblRestore};

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;
  void ClickStartUp(int index);
  void ClickSchedule(int index);
  void ClickSetBossKey();
  void LoadSchedule();

  MainWindow& window_;
  OptionGroup schedule_;
  std::array<OptionButton, 3> optSchedule{
      {{*this, IDC_optSchedule_0, schedule_}, {*this, IDC_optSchedule_1, schedule_}, {*this, IDC_optSchedule_2, schedule_}}};
  SpinButton VSUpDown{*this, IDC_VSUpDown, txtMinutes};
};

}  // namespace automation
