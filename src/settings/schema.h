// The settings schema: every section and key with its form and default, a row each, in the order in which they are saved.
// Loader, saver, bound controls and tests share this one table; a new setting is a name and a row. The flags of the erase
// items have their keys in the catalogue of the items.
#pragma once

#include <array>
#include <cstddef>
#include <iterator>

namespace settings {

// The names are the keys, misspellings included.
enum class Setting {
  ScheduleSecond,
  ScheduleHour,
  ScheduleDay,
  ScheduleMinutes,
  ScheduleMin,
  ScheduledTime,
  chkOptions,
  LoadStartup,
  Startup,
  Shutdown,
  chkShEnable,
  chkRbt,
  CHKieclose,
  txtLevel,
  bossKey,
  Message,
  Titile,
};

enum class SettingForm { Flag, Boolean, Number, Time, Text };

// Which procedure reads the value: ReadStoredSettings into its variable, the boxes of the schedule before the others;
// LoadEraseSettings straight into its control; or somebody else (the invisible-mode button).
enum class ReadBy { StoredSettingsFirst, StoredSettings, EraseSettings, Others };

// Whether SaveEraseSettings writes it; the boss key's button, the warning and the main window's load write the others.
enum class Saved { Yes, ByOthers };

struct SettingRow {
  Setting setting;
  const char* section;
  const char* key;
  SettingForm form;
  const char* defaultText;
  ReadBy readBy;
  Saved saved = Saved::Yes;
};

// clang-format off
inline constexpr SettingRow kSchema[] = {
    {Setting::ScheduleSecond, "Scheduling", "ScheduleSecond", SettingForm::Number, "0", ReadBy::StoredSettings},
    {Setting::ScheduleHour, "Scheduling", "ScheduleHour", SettingForm::Number, "0", ReadBy::StoredSettings},
    {Setting::ScheduleDay, "Scheduling", "ScheduleDay", SettingForm::Flag, "0", ReadBy::StoredSettings},
    {Setting::ScheduleMinutes, "Scheduling", "ScheduleMinutes", SettingForm::Number, "0", ReadBy::StoredSettings},
    {Setting::ScheduleMin, "Scheduling", "ScheduleMin", SettingForm::Number, "60", ReadBy::StoredSettings},
    {Setting::ScheduledTime, "Scheduling", "ScheduledTime", SettingForm::Time, "9:00 AM", ReadBy::StoredSettings},
    {Setting::chkOptions, "Scheduling", "chkOptions", SettingForm::Flag, "0", ReadBy::EraseSettings},
    {Setting::LoadStartup, "Startup", "LoadStartup", SettingForm::Flag, "0", ReadBy::StoredSettings},
    {Setting::Startup, "Startup", "Startup", SettingForm::Flag, "0", ReadBy::StoredSettings},
    {Setting::Shutdown, "Scheduling", "Shutdown", SettingForm::Flag, "0", ReadBy::StoredSettings},
    {Setting::chkShEnable, "Scheduling", "chkShEnable", SettingForm::Flag, "0", ReadBy::StoredSettingsFirst},
    {Setting::chkRbt, "Scheduling", "chkRbt", SettingForm::Flag, "0", ReadBy::StoredSettingsFirst},
    {Setting::CHKieclose, "Scheduling", "CHKieclose", SettingForm::Boolean, "False", ReadBy::StoredSettingsFirst},
    {Setting::txtLevel, "Shredder", "txtLevel", SettingForm::Number, "50", ReadBy::EraseSettings},
    // 121 is the key code of F10.
    {Setting::bossKey, "Boss", "bossKey", SettingForm::Number, "121", ReadBy::StoredSettings, Saved::ByOthers},
    {Setting::Message, "Message_key", "Message", SettingForm::Text, "Do", ReadBy::Others, Saved::ByOthers},
    {Setting::Titile, "Name", "Titile", SettingForm::Text, "", ReadBy::Others, Saved::ByOthers},
};
// clang-format on

constexpr std::size_t kSettingCount = std::size(kSchema);

constexpr const SettingRow& SchemaRow(Setting setting) { return kSchema[static_cast<std::size_t>(setting)]; }

constexpr bool EachRowHasItsOwnName() {
  for (std::size_t row = 0; row < kSettingCount; ++row)
    if (static_cast<std::size_t>(kSchema[row].setting) != row) return false;
  return true;
}
static_assert(EachRowHasItsOwnName(), "the names and the rows are in one order");

// The flag of an erase item: "1" for a ticked box. A new installation erases everything.
inline constexpr char kItemSection[] = "CleanSettings";
inline constexpr char kItemDefault[] = "1";

}  // namespace settings
