#include "settings/stored_settings.h"

#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/schema.h"
#include "settings/settings_coupling.h"
#include "settings/settings_store.h"

namespace settings {
using namespace platform;

namespace {

void ReadEach(ReadBy readBy) {
  for (const SettingRow& row : kSchema)
    if (row.readBy == readBy) resumeNext([&] { Settings[row.setting] = Trim(GetSetting(row.setting)); });
}

}  // namespace

void ReadStoredSettings(std::span<const ItemFlag> items) {
  for (const ItemFlag& item : items) resumeNext([&] { *item.text = Trim(GetItemFlag(item.key)); });
  ReadEach(ReadBy::StoredSettingsFirst);
  ReadEach(ReadBy::StoredSettings);
  resumeNext([] { Settings.CloseBrowsers = ToBoolean(Settings[Setting::CHKieclose]); });
  Settings.ScheduleTickCount = 0;
  resumeNext([] { Settings.BossKeyCode = ToLong(NumberOf(Settings[Setting::bossKey])); });
}

void WriteStoredSettings(std::span<const ItemFlag> items) {
  for (const ItemFlag& item : items) SaveSetting(kItemSection, item.key, *item.text);
  Settings[Setting::CHKieclose] = BooleanText(Settings.CloseBrowsers);
  for (const SettingRow& row : kSchema) {
    if (row.saved != Saved::Yes) continue;
    if (row.setting == Setting::Startup) CoupleStartupFlags(Settings);
    SaveSetting(row.setting, Settings[row.setting]);
  }
}

}  // namespace settings
