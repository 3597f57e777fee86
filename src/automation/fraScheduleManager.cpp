#include "automation/fraScheduleManager.h"

#include <cstddef>
#include <optional>
#include <string>

#include "automation/boss_key.h"
#include "automation/restore_label.h"
#include "automation/updater.h"
#include "platform/ErroHandle.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_coupling.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

#include <commctrl.h>

namespace automation {
using namespace platform;
using settings::Setting;
using settings::Settings;

namespace {

constexpr int kMostMinutes = 32767;  // the tick counter ends there

std::string LocaleText(LCTYPE what) {
  char text[32] = "";
  ::GetLocaleInfoA(LOCALE_USER_DEFAULT, what, text, sizeof text);
  return text;
}

DayHalves Halves() { return {.am = LocaleText(LOCALE_S1159), .pm = LocaleText(LOCALE_S2359)}; }

}  // namespace

fraScheduleManager::fraScheduleManager(MainWindow& window)
    : Panel(IDD_fraScheduleManager, IDC_fraScheduleManager), window_(window) {
  VSUpDown.SetRange(1, kMostMinutes);
}

void fraScheduleManager::OnInit() {
  ::SendMessageA(dtpTime.Handle(), DTM_SETFORMATA, 0, reinterpret_cast<LPARAM>(PickerFormat(Halves())));
  for (int key = 1; key <= 12; ++key) cmbBoss.AddItem("F" + std::to_string(key));
}

// The boxes that mirror a setting have done so by now.
void fraScheduleManager::OnClick(int id) {
  if (id == IDC_chkStartUp_0) ClickLoadAtStartUp();
  if (!loading_ && id >= IDC_chkStartUp_0 && id <= IDC_chkStartUp_2) ShowStartUpStatus();
  if (id >= IDC_optSchedule_0 && id <= IDC_optSchedule_2) ClickMode(static_cast<ScheduleMode>(id - IDC_optSchedule_0));
  if (id == IDC_chkShEnable) ClickScheduleEnabled();
  if (id == IDC_CHKieclose) Settings.CloseBrowsers = ClosesBrowsers();
  if (id == IDC_cmbBossSet) ClickSetBossKey();
  if (id == IDC_cmdRunInv) window_.RunInvisibly();
  if (id == IDC_cmdUpgrade) StartUpdater();
}

// Erasing at start-up needs loading at start-up.
void fraScheduleManager::ClickLoadAtStartUp() {
  const bool loads = Settings[Setting::LoadStartup] != "0";
  if (!loads) {
    chkStartUp[2].SetValue(0);
    Settings[Setting::Startup] = "0";
  }
  chkStartUp[2].SetEnabled(loads);
}

void fraScheduleManager::ClickMode(ScheduleMode mode) {
  reportAndLeave("frmMain,OptSchdule", [&] { Choose(mode); });  // the tag as reports have it
}

void fraScheduleManager::Choose(ScheduleMode mode) {
  const ModeChoice choice = ChoiceOf(mode);
  Settings[Setting::ScheduleDay] = choice.dailyFlag;
  Settings[Setting::ScheduleHour] = choice.hourlyFlag;
  Settings[Setting::ScheduleMinutes] = choice.minutesFlag;
  dtpTime.SetEnabled(choice.pickerEnabled);
  VSUpDown.SetEnabled(choice.spinEnabled);
  if (choice.minutesBoxEnabled) txtMinutes.SetEnabled(*choice.minutesBoxEnabled);
  if (choice.keepsMinutesText) Settings[Setting::ScheduleMin] = txtMinutes.Text();
}

void fraScheduleManager::ClickScheduleEnabled() {
  for (OptionButton& option : optSchedule) option.SetEnabled(IsScheduleOn());
  CHKieclose.SetEnabled(true);  // never disabled by the schedule's box, since a manual run goes by them too
  chkRbt.SetEnabled(true);
}

void fraScheduleManager::ClickSetBossKey() {
  const std::string name = cmbBoss.Text();
  Settings.BossKeyCode = BossKeyCodeOf(name);
  lblRestore.SetText(RestoreLabel(name));
  resumeNext([] { settings::SaveSetting(Setting::bossKey, std::to_string(Settings.BossKeyCode)); });
  window_.ShowBossKey(name);
}

ScheduleFacts fraScheduleManager::Facts() const {
  SYSTEMTIME now;
  ::GetLocalTime(&now);
  const DayHalves halves = Halves();
  return {.enabled = IsScheduleOn(),
          .hourlyFlag = Settings[Setting::ScheduleHour],
          .dailyChosen = optSchedule[0].Value(),
          .minutesFlag = Settings[Setting::ScheduleMinutes],
          .minutesText = txtMinutes.Text(),
          .now = TimeText(now.wHour, now.wMinute, halves),
          .picked = TimeText(dtpTime.Hour(), dtpTime.Minute(), halves)};
}

void fraScheduleManager::getBossKeySetting() {
  const std::string name = BossKeyName(Settings.BossKeyCode);
  cmbBoss.SetText(name);
  window_.ShowBossKey(name);
}

void fraScheduleManager::ShowStartUpStatus() {
  lblRestore.SetText(RestoreLabel(cmbBoss.Text()));
  window_.SetStatusText("Displaying StartUP");
}

void fraScheduleManager::AfterFront() {
  lblRestore.SetText(RestoreLabelFromNavigation(cmbBoss.Text()));
  Click(IDC_chkShEnable);
}

void fraScheduleManager::LoadEraseSettings() {
  resumeNext([this] { chkShEnable.Load(); });
  resumeNext([this] { chkRbt.Load(); });
  resumeNext([this] { CHKieclose.SetValue(Settings.CloseBrowsers ? 1 : 0); });
}

// In this order: minutes box, picker, start-up boxes, schedule option, spin button.
void fraScheduleManager::LoadGeneralSettings() {
  txtMinutes.SetText(Settings[Setting::ScheduleMin]);
  const RestoredSchedule restored = RestoreSchedule({.dailyFlag = Settings[Setting::ScheduleDay],
                                                     .hourlyFlag = Settings[Setting::ScheduleHour],
                                                     .minutesFlag = Settings[Setting::ScheduleMinutes],
                                                     .second = Settings[Setting::ScheduleSecond],
                                                     .minutesText = Settings[Setting::ScheduleMin]});
  dtpTime.SetMinute(restored.pickerMinute);
  dtpTime.SetHour(restored.pickerHour);
  dtpTime.SetSecond(restored.pickerSecond);
  LoadStartUp();
  if (restored.mode != ScheduleMode::None) optSchedule[static_cast<std::size_t>(restored.mode)].Choose();
  txtMinutes.SetText(restored.minutesText);
  VSUpDown.SetValue(restored.spin);
}

void fraScheduleManager::LoadStartUp() {
  const Loading loading(*this);
  const std::string startup = Settings[Setting::Startup];  // the first box's Click may clear the variable
  chkStartUp[0].Load();
  chkStartUp[1].Load();
  if (chkStartUp[0].Value() == 1) chkStartUp[2].SetValue(NumberOf(startup));
}

void fraScheduleManager::KeepSettings() {
  settings::CopyScheduleTexts(Settings, txtMinutes.Text(),
                              {.minute = std::to_string(dtpTime.Minute()),
                               .hour = std::to_string(dtpTime.Hour()),
                               .second = std::to_string(dtpTime.Second())});
}

}  // namespace automation
