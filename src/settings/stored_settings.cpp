#include "settings/stored_settings.h"

#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_coupling.h"
#include "settings/settings_store.h"

namespace settings {
using namespace platform;

void ReadStoredSettings() {
  for (const SettingRow& row : kSchema) {
    if (row.reader != SettingReader::ReadStoredSettings) continue;
    resumeNext([&] { Settings[row.setting] = Trim(GetSetting(row.setting)); });
  }
  resumeNext([] { Settings.CloseBrowsers = ToBoolean(Settings[Setting::CHKieclose]); });
  Settings.ScheduleTickCount = 0;
  resumeNext([] { Settings.BossKeyCode = ToLong(NumberOf(Settings[Setting::bossKey])); });
}

void WriteStoredSettings(const ControlTexts& controls) {
  CopyScheduleTexts(Settings, controls.txtMinutes, {controls.pickerMinute, controls.pickerHour, controls.pickerSecond});
  Settings[Setting::chkOptions] = controls.chkOptions;
  Settings[Setting::CHKieclose] = BooleanText(Settings.CloseBrowsers);
  Settings[Setting::txtLevel] = controls.txtLevel;
  for (const Setting setting : SaveOrder()) {
    if (setting == Setting::Startup) CoupleStartupFlags(Settings);
    SaveSetting(setting, Settings[setting]);
  }
}

}  // namespace settings
