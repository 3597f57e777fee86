// The panel "Advance Settings": invisible mode, boss key, start-up options and the schedule.
#pragma once

#include <array>

#include "automation/fraScheduleManager_ids.h"
#include "automation/schedule_options.h"
#include "automation/schedule_tick.h"
#include "platform/controls.h"
#include "platform/main_window.h"
#include "platform/panel.h"
#include "settings/bound_controls.h"
#include "settings/schema.h"

namespace automation {
using namespace platform;

class fraScheduleManager final : public Panel {
 public:
  explicit fraScheduleManager(MainWindow& window);

  // Shows the stored boss key in the combo, and in the main settings panel.
  void getBossKeySetting();

  // The restore label as at start-up, and "Displaying StartUP" in the status bar. It changes no panel.
  void ShowStartUpStatus();

  // What the scheduler's tick looks at, as it is now.
  ScheduleFacts Facts() const;

  // What a run is to do by the boxes.
  bool IsScheduleOn() const { return chkShEnable.Value() == 1; }
  bool RebootsAfterErase() const { return chkRbt.Value() == 1; }
  bool ClosesBrowsers() const { return CHKieclose.Value() == 1; }

  // Panel
  void AfterFront() override;
  void LoadEraseSettings() override;
  void LoadGeneralSettings() override;
  void KeepSettings() override;

 private:
  void OnInit() override;
  void OnClick(int id) override;
  void ClickLoadAtStartUp();
  void ClickMode(ScheduleMode mode);
  void Choose(ScheduleMode mode);
  void ClickScheduleEnabled();
  void ClickSetBossKey();
  void LoadStartUp();

  // While one lives, the start-up boxes are clicked by the program and not by its user.
  class Loading {
   public:
    explicit Loading(fraScheduleManager& panel) : panel_(panel) { panel_.loading_ = true; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;
    ~Loading() { panel_.loading_ = false; }

   private:
    fraScheduleManager& panel_;
  };

  bool loading_ = false;
  MainWindow& window_;
  settings::SettingCheckBox chkShEnable{*this, IDC_chkShEnable, settings::Setting::chkShEnable};
  settings::SettingCheckBox chkRbt{*this, IDC_chkRbt, settings::Setting::chkRbt};
  CheckBox CHKieclose{*this, IDC_CHKieclose};
  std::array<settings::SettingCheckBox, 3> chkStartUp{{{*this, IDC_chkStartUp_0, settings::Setting::LoadStartup},
                                                       {*this, IDC_chkStartUp_1, settings::Setting::Shutdown},
                                                       {*this, IDC_chkStartUp_2, settings::Setting::Startup}}};
  TimePicker dtpTime{*this, IDC_dtpTime};
  TextBox txtMinutes{*this, IDC_txtMinutes};
  ComboBox cmbBoss{*this, IDC_cmbBoss};
  Label lblRestore{*this, IDC_lblRestore};
  OptionGroup schedule_;
  std::array<OptionButton, 3> optSchedule{
      {{*this, IDC_optSchedule_0, schedule_}, {*this, IDC_optSchedule_1, schedule_}, {*this, IDC_optSchedule_2, schedule_}}};
  SpinButton VSUpDown{*this, IDC_VSUpDown, txtMinutes};
};

}  // namespace automation
