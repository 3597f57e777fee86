#include "automation/fraScheduleManager.h"

#include "automation/boss_key.h"
#include "automation/restore_label.h"
#include "automation/updater.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

#include <commctrl.h>

namespace automation {
using namespace platform;

namespace {

constexpr int kMostMinutes = 32767;  // the tick counter ends there

std::string LocaleText(LCTYPE what) {
  char text[32] = "";
  ::GetLocaleInfoA(LOCALE_USER_DEFAULT, what, text, sizeof text);
  return text;
}

std::string ValueText(const CheckBox& box) { return Trim(std::to_string(box.Value())); }

}  // namespace

fraScheduleManager::fraScheduleManager(MainWindow& window) : window_(window) { VSUpDown.SetRange(1, kMostMinutes); }

HWND fraScheduleManager::Create(HWND parent) { return Dialog::Create(IDD_fraScheduleManager, parent); }

void fraScheduleManager::OnInit() {
  ::SendMessageA(dtpTime.Handle(), DTM_SETFORMATA, 0, reinterpret_cast<LPARAM>("hh:mm tt"));
  for (int key = 1; key <= 12; ++key) cmbBoss.AddItem("F" + std::to_string(key));
}

void fraScheduleManager::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  if (id >= IDC_chkStartUp_0 && id <= IDC_chkStartUp_2) {
    ClickStartUp(id - IDC_chkStartUp_0);
    ShowStartUpStatus();
  }
  if (id >= IDC_optSchedule_0 && id <= IDC_optSchedule_2) ClickSchedule(id - IDC_optSchedule_0);
  if (id == IDC_chkShEnable) ClickScheduleEnabled();
  if (id == IDC_chkRbt) settings::Settings[settings::Setting::chkRbt] = ValueText(chkRbt);
  if (id == IDC_CHKieclose) settings::Settings.CloseBrowsers = CHKieclose.Value() == 1;
  if (id == IDC_cmbBossSet) ClickSetBossKey();
  if (id == IDC_cmdRunInv) window_.RunInvisibly();
  if (id == IDC_cmdUpgrade) StartUpdater(window_.Window());
}

void fraScheduleManager::ClickStartUp(int index) {
  const std::string text = ValueText(chkStartUp[static_cast<std::size_t>(index)]);
  switch (index) {
    case 0:
      settings::Settings[settings::Setting::LoadStartup] = text;
      if (text == "0") {
        chkStartUp[2].SetValue(0);
        settings::Settings[settings::Setting::Startup] = "0";
      }
      chkStartUp[2].SetEnabled(text != "0");
      break;
    case 1:
      settings::Settings[settings::Setting::Shutdown] = text;
      break;
    case 2:
      settings::Settings[settings::Setting::Startup] = text;
      break;
  }
}

void fraScheduleManager::ClickSchedule(int index) {
  settings::Settings[settings::Setting::ScheduleDay] = index == 0 ? "1" : "0";
  settings::Settings[settings::Setting::ScheduleHour] = index == 1 ? "1" : "0";
  settings::Settings[settings::Setting::ScheduleMinutes] = index == 2 ? "1" : "0";
  dtpTime.SetEnabled(index == 0);
  if (index == 2) {
    // The box itself stays as it is; its number changes through the spin button.
    VSUpDown.SetEnabled(true);
    settings::Settings[settings::Setting::ScheduleMin] = txtMinutes.Text();
  } else {
    txtMinutes.SetEnabled(false);
    VSUpDown.SetEnabled(false);
  }
}

void fraScheduleManager::ClickScheduleEnabled() {
  const bool enabled = chkShEnable.Value() == 1;
  for (OptionButton& option : optSchedule) option.SetEnabled(enabled);
  CHKieclose.SetEnabled(true);  // never disabled by the schedule's box; meant
  chkRbt.SetEnabled(true);
  settings::Settings[settings::Setting::chkShEnable] = ValueText(chkShEnable);
}

void fraScheduleManager::ClickSetBossKey() {
  const std::string name = cmbBoss.Text();
  settings::Settings.BossKeyCode = BossKeyCodeOf(name);
  lblRestore.SetText(RestoreLabel(name));
  resumeNext([] { settings::SaveSetting(settings::Setting::bossKey, std::to_string(settings::Settings.BossKeyCode)); });
  window_.ShowBossKey(name);
}

ScheduleFacts fraScheduleManager::Facts() const {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  const DayHalves halves{LocaleText(LOCALE_S1159), LocaleText(LOCALE_S2359)};
  return {chkShEnable.Value() == 1,
          settings::Settings[settings::Setting::ScheduleHour],
          optSchedule[0].Value(),
          settings::Settings[settings::Setting::ScheduleMinutes],
          txtMinutes.Text(),
          TimeText(now.wHour, now.wMinute, halves),
          TimeText(dtpTime.Hour(), dtpTime.Minute(), halves)};
}

void fraScheduleManager::getBossKeySetting() { cmbBoss.SetText(BossKeyName(settings::Settings.BossKeyCode)); }

void fraScheduleManager::ShowStartUpStatus() {
  lblRestore.SetText(RestoreLabel(cmbBoss.Text()));
  window_.SetStatusText("Displaying StartUP");
}

void fraScheduleManager::LoadGeneralSettings() {
  txtMinutes.SetText(settings::Settings[settings::Setting::ScheduleMin]);
  // The picker takes the texts that also are the option flags; the daily time of an earlier session does not come back.
  dtpTime.SetMinute(NumberOf(settings::Settings[settings::Setting::ScheduleMinutes]));
  dtpTime.SetHour(NumberOf(settings::Settings[settings::Setting::ScheduleHour]));
  dtpTime.SetSecond(NumberOf(settings::Settings[settings::Setting::ScheduleSecond]));
  const std::string startup =
      settings::Settings[settings::Setting::Startup];  // the first box's Click may clear the variable
  chkStartUp[0].SetValue(NumberOf(settings::Settings[settings::Setting::LoadStartup]));
  chkStartUp[1].SetValue(NumberOf(settings::Settings[settings::Setting::Shutdown]));
  if (chkStartUp[0].Value() == 1) chkStartUp[2].SetValue(NumberOf(startup));
  LoadSchedule();
}

void fraScheduleManager::LoadSchedule() {
  if (settings::Settings[settings::Setting::ScheduleDay] == "1") {
    optSchedule[0].Choose();
  } else if (settings::Settings[settings::Setting::ScheduleHour] == "1") {
    optSchedule[1].Choose();
  } else if (settings::Settings[settings::Setting::ScheduleMinutes] == "1") {
    optSchedule[2].Choose();
    txtMinutes.SetText(TextOf(NumberOf(settings::Settings[settings::Setting::ScheduleMin])));
  }
  const double minutes = NumberOf(txtMinutes.Text());
  VSUpDown.SetValue(minutes == 0.0 ? 10.0 : minutes);
}

}  // namespace automation
