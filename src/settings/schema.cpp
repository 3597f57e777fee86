#include "settings/schema.h"

namespace settings {

namespace {

constexpr char kClean[] = "CleanSettings";
constexpr char kScheduling[] = "Scheduling";
constexpr char kStartup[] = "Startup";

// An item flag: a new installation erases everything.
constexpr SettingRow Item(Setting setting, const char* key) {
  return {setting, kClean, key, SettingForm::Flag, "1", SettingReader::ReadStoredSettings, static_cast<int>(setting) + 1};
}

constexpr auto kRead = SettingReader::ReadStoredSettings;
constexpr auto kErase = SettingReader::LoadEraseSettings;
constexpr auto kElsewhere = SettingReader::Elsewhere;

}  // namespace

constexpr std::array<SettingRow, kSettingCount> kSchema = {{
    Item(Setting::LocationbarHistory, "LocationbarHistory"),
    Item(Setting::ClearAutoComplete, "ClearAutoComplete"),
    Item(Setting::TemporaryInternetFile, "TemporaryInternetFile"),
    Item(Setting::ClearAutoCompletePower, "ClearAutoCompletePower"),
    Item(Setting::InternetHistory, "InternetHistory"),
    Item(Setting::UrlErrorLogs, "UrlErrorLogs"),
    Item(Setting::IEHistory, "IEHistory"),
    Item(Setting::ClearLockedIndex, "ClearLockedIndex"),
    Item(Setting::Cookies, "Cookies"),
    Item(Setting::WinTempFileFolder, "WinTempFileFolder"),
    Item(Setting::RecentDocumentList, "RecentDocumentList"),
    Item(Setting::RecycleBin, "RecycleBin"),
    Item(Setting::ScanDisk, "ScanDisk"),
    Item(Setting::FindFileFolderHistory, "FindFileFolderHistory"),
    Item(Setting::RunHistory, "RunHistory"),
    Item(Setting::OpenSavedDialoge, "OpenSavedDialoge"),
    Item(Setting::RecentDocument, "RecentDocument"),
    Item(Setting::EraseRegistryFrame, "EraseRegistryFrame"),
    Item(Setting::NCookies, "NCookies"),
    Item(Setting::NTypedHistory, "NTypedHistory"),
    Item(Setting::NClearMailHistry, "NClearMailHistry"),
    Item(Setting::NCache, "NCache"),
    Item(Setting::Ocookies, "Ocookies"),
    Item(Setting::OClean, "OClean"),
    Item(Setting::OTypedUrl, "OTypedUrl"),
    // setting, section, key, form, default, reader, save order
    {Setting::chkShEnable, kScheduling, "chkShEnable", SettingForm::Flag, "0", kRead, 36},
    {Setting::chkRbt, kScheduling, "chkRbt", SettingForm::Flag, "0", kRead, 37},
    {Setting::CHKieclose, kScheduling, "CHKieclose", SettingForm::Boolean, "False", kRead, 38},
    {Setting::ScheduleSecond, kScheduling, "ScheduleSecond", SettingForm::Number, "0", kRead, 26},
    {Setting::ScheduleHour, kScheduling, "ScheduleHour", SettingForm::Number, "0", kRead, 27},
    {Setting::ScheduleDay, kScheduling, "ScheduleDay", SettingForm::Flag, "0", kRead, 28},
    {Setting::ScheduleMinutes, kScheduling, "ScheduleMinutes", SettingForm::Number, "0", kRead, 29},
    {Setting::ScheduleMin, kScheduling, "ScheduleMin", SettingForm::Number, "60", kRead, 30},
    {Setting::ScheduledTime, kScheduling, "ScheduledTime", SettingForm::Time, "9:00 AM", kRead, 31},
    {Setting::LoadStartup, kStartup, "LoadStartup", SettingForm::Flag, "0", kRead, 33},
    {Setting::Startup, kStartup, "Startup", SettingForm::Flag, "0", kRead, 34},
    {Setting::Shutdown, kScheduling, "Shutdown", SettingForm::Flag, "0", kRead, 35},
    {Setting::bossKey, "Boss", "bossKey", SettingForm::Number, "121", kRead, kNotSaved},  // 121 is the key code of F10
    {Setting::chkOptions, kScheduling, "chkOptions", SettingForm::Flag, "0", kErase, 32},
    {Setting::txtLevel, "Shredder", "txtLevel", SettingForm::Number, "50", kErase, 39},
    {Setting::Message, "Message_key", "Message", SettingForm::Text, "Do", kElsewhere, kNotSaved},
    {Setting::Titile, "Name", "Titile", SettingForm::Text, "", kElsewhere, kNotSaved},
}};

const SettingRow& SchemaRow(Setting setting) { return kSchema[static_cast<std::size_t>(setting)]; }

std::array<Setting, kSavedCount> SaveOrder() {
  std::array<Setting, kSavedCount> order{};
  for (const SettingRow& row : kSchema)
    if (row.saveOrder != kNotSaved) order[static_cast<std::size_t>(row.saveOrder) - 1] = row.setting;
  return order;
}

}  // namespace settings
