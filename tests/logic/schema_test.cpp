#include "settings/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace settings;

namespace {

constexpr auto kFlag = SettingForm::Flag;
constexpr auto kBoolean = SettingForm::Boolean;
constexpr auto kNumber = SettingForm::Number;
constexpr auto kTime = SettingForm::Time;
constexpr auto kText = SettingForm::Text;

struct Expected {
  const char* section;
  const char* key;
  const char* defaultText;
  SettingForm form;
};

// In reading order.
const Expected kReadByReadStoredSettings[] = {
    {"CleanSettings", "LocationbarHistory", "1", kFlag},
    {"CleanSettings", "ClearAutoComplete", "1", kFlag},
    {"CleanSettings", "TemporaryInternetFile", "1", kFlag},
    {"CleanSettings", "ClearAutoCompletePower", "1", kFlag},
    {"CleanSettings", "InternetHistory", "1", kFlag},
    {"CleanSettings", "UrlErrorLogs", "1", kFlag},
    {"CleanSettings", "IEHistory", "1", kFlag},
    {"CleanSettings", "ClearLockedIndex", "1", kFlag},
    {"CleanSettings", "Cookies", "1", kFlag},
    {"CleanSettings", "WinTempFileFolder", "1", kFlag},
    {"CleanSettings", "RecentDocumentList", "1", kFlag},
    {"CleanSettings", "RecycleBin", "1", kFlag},
    {"CleanSettings", "ScanDisk", "1", kFlag},
    {"CleanSettings", "FindFileFolderHistory", "1", kFlag},
    {"CleanSettings", "RunHistory", "1", kFlag},
    {"CleanSettings", "OpenSavedDialoge", "1", kFlag},
    {"CleanSettings", "RecentDocument", "1", kFlag},
    {"CleanSettings", "EraseRegistryFrame", "1", kFlag},
    {"CleanSettings", "NCookies", "1", kFlag},
    {"CleanSettings", "NTypedHistory", "1", kFlag},
    {"CleanSettings", "NClearMailHistry", "1", kFlag},
    {"CleanSettings", "NCache", "1", kFlag},
    {"CleanSettings", "Ocookies", "1", kFlag},
    {"CleanSettings", "OClean", "1", kFlag},
    {"CleanSettings", "OTypedUrl", "1", kFlag},
    {"Scheduling", "chkShEnable", "0", kFlag},
    {"Scheduling", "chkRbt", "0", kFlag},
    {"Scheduling", "CHKieclose", "False", kBoolean},
    {"Scheduling", "ScheduleSecond", "0", kNumber},
    {"Scheduling", "ScheduleHour", "0", kNumber},
    {"Scheduling", "ScheduleDay", "0", kFlag},
    {"Scheduling", "ScheduleMinutes", "0", kNumber},
    {"Scheduling", "ScheduleMin", "60", kNumber},
    {"Scheduling", "ScheduledTime", "9:00 AM", kTime},
    {"Startup", "LoadStartup", "0", kFlag},
    {"Startup", "Startup", "0", kFlag},
    {"Scheduling", "Shutdown", "0", kFlag},
    {"Boss", "bossKey", "121", kNumber},
};

const Expected kReadByLoadEraseSettings[] = {
    {"Scheduling", "chkOptions", "0", kFlag},
    {"Shredder", "txtLevel", "50", kNumber},
};

const Expected kReadElsewhere[] = {
    {"Message_key", "Message", "Do", kText},
    {"Name", "Titile", "", kText},
};

// "section/key" in the order in which they are written.
const std::vector<std::string> kSaved = {
    "CleanSettings/LocationbarHistory",
    "CleanSettings/ClearAutoComplete",
    "CleanSettings/TemporaryInternetFile",
    "CleanSettings/ClearAutoCompletePower",
    "CleanSettings/InternetHistory",
    "CleanSettings/UrlErrorLogs",
    "CleanSettings/IEHistory",
    "CleanSettings/ClearLockedIndex",
    "CleanSettings/Cookies",
    "CleanSettings/WinTempFileFolder",
    "CleanSettings/RecentDocumentList",
    "CleanSettings/RecycleBin",
    "CleanSettings/ScanDisk",
    "CleanSettings/FindFileFolderHistory",
    "CleanSettings/RunHistory",
    "CleanSettings/OpenSavedDialoge",
    "CleanSettings/RecentDocument",
    "CleanSettings/EraseRegistryFrame",
    "CleanSettings/NCookies",
    "CleanSettings/NTypedHistory",
    "CleanSettings/NClearMailHistry",
    "CleanSettings/NCache",
    "CleanSettings/Ocookies",
    "CleanSettings/OClean",
    "CleanSettings/OTypedUrl",
    "Scheduling/ScheduleSecond",
    "Scheduling/ScheduleHour",
    "Scheduling/ScheduleDay",
    "Scheduling/ScheduleMinutes",
    "Scheduling/ScheduleMin",
    "Scheduling/ScheduledTime",
    "Scheduling/chkOptions",
    "Startup/LoadStartup",
    "Startup/Startup",
    "Scheduling/Shutdown",
    "Scheduling/chkShEnable",
    "Scheduling/chkRbt",
    "Scheduling/CHKieclose",
    "Shredder/txtLevel",
};

std::string PathOf(const SettingRow& row) { return std::string(row.section) + "/" + row.key; }

std::vector<const SettingRow*> RowsReadBy(SettingReader reader) {
  std::vector<const SettingRow*> rows;
  for (const SettingRow& row : kSchema)
    if (row.reader == reader) rows.push_back(&row);
  return rows;
}

template <std::size_t Count>
void ExpectRows(SettingReader reader, const Expected (&expected)[Count]) {
  const std::vector<const SettingRow*> rows = RowsReadBy(reader);
  ASSERT_EQ(rows.size(), Count);
  for (std::size_t i = 0; i < Count; ++i) {
    const std::string path = std::string(expected[i].section) + "/" + expected[i].key;
    EXPECT_EQ(PathOf(*rows[i]), path) << "row " << i;
    EXPECT_STREQ(rows[i]->defaultText, expected[i].defaultText) << "default of " << path;
    EXPECT_EQ(static_cast<int>(rows[i]->form), static_cast<int>(expected[i].form)) << "form of " << path;
  }
}

}  // namespace

TEST(Schema, ReadsTheStoredSettingsInTheirOrderWithTheirDefaults) {
  ExpectRows(SettingReader::ReadStoredSettings, kReadByReadStoredSettings);
}

TEST(Schema, LeavesTheShredderBoxAndLevelToTheControls) {
  ExpectRows(SettingReader::LoadEraseSettings, kReadByLoadEraseSettings);
}

TEST(Schema, LeavesTheWarningAndTheCaptionToTheirOwners) { ExpectRows(SettingReader::Elsewhere, kReadElsewhere); }

TEST(Schema, WritesTheSettingsInTheirOrder) {
  std::vector<std::string> saved;
  for (const Setting setting : SaveOrder()) saved.push_back(PathOf(SchemaRow(setting)));
  EXPECT_THAT(saved, testing::ElementsAreArray(kSaved));
}

TEST(Schema, SavesNothingOfTheBossKeyTheWarningAndTheCaption) {
  std::vector<std::string> unsaved;
  for (const SettingRow& row : kSchema)
    if (row.saveOrder == kNotSaved) unsaved.push_back(PathOf(row));
  EXPECT_THAT(unsaved, testing::ElementsAre("Boss/bossKey", "Message_key/Message", "Name/Titile"));
}

TEST(Schema, GivesEverySavedSettingAPositionOfItsOwn) {
  std::set<int> positions;
  for (const SettingRow& row : kSchema)
    if (row.saveOrder != kNotSaved)
      EXPECT_TRUE(positions.insert(row.saveOrder).second) << PathOf(row) << " shares its position";
  EXPECT_EQ(positions.size(), 39u);
  EXPECT_EQ(*positions.begin(), 1);
  EXPECT_EQ(*positions.rbegin(), 39);
}

TEST(Schema, HasEachSettingAndEachKeyOnce) {
  EXPECT_EQ(kSettingCount, 42u);
  EXPECT_EQ(kItemFlagCount, 25u);
  std::set<std::string> paths;
  for (std::size_t i = 0; i < kSettingCount; ++i) {
    EXPECT_EQ(static_cast<std::size_t>(kSchema[i].setting), i) << PathOf(kSchema[i]) << " stands in another setting's row";
    EXPECT_TRUE(paths.insert(PathOf(kSchema[i])).second) << PathOf(kSchema[i]) << " stands twice";
  }
}

TEST(SchemaRow, IsTheRowOfThatSetting) {
  for (const SettingRow& row : kSchema) EXPECT_EQ(&SchemaRow(row.setting), &row) << PathOf(row);
  const std::pair<Setting, const char*> rows[] = {
      {Setting::LocationbarHistory, "CleanSettings/LocationbarHistory"},
      {Setting::OTypedUrl, "CleanSettings/OTypedUrl"},
      {Setting::chkShEnable, "Scheduling/chkShEnable"},
      {Setting::CHKieclose, "Scheduling/CHKieclose"},
      {Setting::ScheduledTime, "Scheduling/ScheduledTime"},
      {Setting::Startup, "Startup/Startup"},
      {Setting::Shutdown, "Scheduling/Shutdown"},
      {Setting::bossKey, "Boss/bossKey"},
      {Setting::chkOptions, "Scheduling/chkOptions"},
      {Setting::txtLevel, "Shredder/txtLevel"},
      {Setting::Message, "Message_key/Message"},
      {Setting::Titile, "Name/Titile"},
  };
  for (const auto& [setting, path] : rows) EXPECT_EQ(PathOf(SchemaRow(setting)), path);
}
