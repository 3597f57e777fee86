// The main window's start-up sequence and the controls' share of loading and saving the settings.
#include "app/frmMain.h"
#include "app/quellix_ids.h"
#include "app/timers.h"
#include "automation/modReboot.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/os_name.h"
#include "platform/product.h"
#include "platform/system_functions.h"
#include "platform/text_value.h"
#include "settings/settings_store.h"
#include "settings/stored_settings.h"

namespace app {
using namespace platform;

void frmMain::RunStartUp() {
  resumeNext([] { settings::SaveSetting(settings::Setting::Titile, QUELLIX_CAPTION); });
  settings::ReadStoredSettings();
  LoadEraseSettings();
  LoadGeneralSettings();
  resumeNext([this] { panels_.scheduleManager.getBossKeySetting(); });
  resumeNext([this] { panels_.main.Label1.SetText(panels_.scheduleManager.cmbBoss.Text()); });
  resumeNext([this] { BringToFront(Panel::MainSettings); });
  OsName = FindOS();
  resumeNext([this] { panels_.shred.LoadFiles(); });
  ::ShowWindow(Handle(), SW_SHOW);
  ::RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  CreateOtherPanels();
  resumeNext([] { late::CoInitialize(nullptr); });  // for the shell
  // Before the icon exists and the status text is set; both then show that the run is over.
  if (Trim(settings::Settings[settings::Setting::Startup]) == "1") EraseOnly();
  icon_.Fill(Handle(), reinterpret_cast<HICON>(::SendMessageA(Handle(), WM_GETICON, ICON_SMALL, 0)), QUELLIX_CAPTION);
  resumeNext([this] { icon_.Add(); });
  SetStatusText(PanelStatusText(Panel::MainSettings, cmdDefault.Text()));
}

void frmMain::LoadEraseSettings() {
  panels_.main.LoadItemBoxes();
  resumeNext([this] { panels_.shred.chkOptions.SetValue(NumberOf(settings::GetSetting(settings::Setting::chkOptions))); });
  resumeNext(
      [this] { panels_.shred.txtLevel.SetText(TextOf(NumberOf(settings::GetSetting(settings::Setting::txtLevel)))); });
  resumeNext([this] {
    panels_.scheduleManager.chkShEnable.SetValue(NumberOf(settings::Settings[settings::Setting::chkShEnable]));
  });
  resumeNext([this] { panels_.scheduleManager.chkRbt.SetValue(NumberOf(settings::Settings[settings::Setting::chkRbt])); });
  resumeNext([this] { panels_.scheduleManager.CHKieclose.SetValue(settings::Settings.CloseBrowsers ? 1 : 0); });
}

void frmMain::LoadGeneralSettings() {
  ArmScheduler(Handle());
  reportAndLeave("frmMain,LoadGeneralSettings", [this] { panels_.scheduleManager.LoadGeneralSettings(); });
}

void frmMain::SaveEraseSettings() {
  reportAndLeave("frmMain,SaveEraseSettings", [this] {
    automation::RegisterStartup();
    const automation::fraScheduleManager& schedule = panels_.scheduleManager;
    settings::WriteStoredSettings({schedule.txtMinutes.Text(), std::to_string(schedule.dtpTime.Minute()),
                                   std::to_string(schedule.dtpTime.Hour()), std::to_string(schedule.dtpTime.Second()),
                                   std::to_string(panels_.shred.chkOptions.Value()), panels_.shred.txtLevel.Text()});
    if (panels_.shred.lstFiles.ListCount() > 0) panels_.shred.SaveSettingsToFile();
  });
}

void frmMain::SaveAllSettings() {
  resumeNext([this] { SaveEraseSettings(); });
}

}  // namespace app
