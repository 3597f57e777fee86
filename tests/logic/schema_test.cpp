#include "settings/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "expected_items.h"

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

// In reading order, after the items.
const Expected kReadByReadStoredSettings[] = {
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

// "section/key" in the order in which they are written, after the items.
const std::vector<std::string> kSaved = {
    "Scheduling/ScheduleSecond", "Scheduling/ScheduleHour",  "Scheduling/ScheduleDay", "Scheduling/ScheduleMinutes",
    "Scheduling/ScheduleMin",    "Scheduling/ScheduledTime", "Scheduling/chkOptions",  "Startup/LoadStartup",
    "Startup/Startup",           "Scheduling/Shutdown",      "Scheduling/chkShEnable", "Scheduling/chkRbt",
    "Scheduling/CHKieclose",     "Shredder/txtLevel",
};

std::string PathOf(const SettingRow& row) { return std::string(row.section) + "/" + row.key; }

std::vector<const SettingRow*> RowsReadBy(SettingReader reader) {
  std::vector<const SettingRow*> rows;
  for (const SettingRow& row : kSchema)
    if (row.reader == reader) rows.push_back(&row);
  return rows;
}

// A new installation erases everything.
std::vector<Expected> ExpectedItemRows(const std::vector<std::string>& keys) {
  std::vector<Expected> rows;
  for (const std::string& key : keys) rows.push_back({"CleanSettings", key.c_str(), "1", kFlag});
  return rows;
}

void ExpectRows(SettingReader reader, const std::vector<Expected>& expected) {
  const std::vector<const SettingRow*> rows = RowsReadBy(reader);
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const std::string path = std::string(expected[i].section) + "/" + expected[i].key;
    EXPECT_EQ(PathOf(*rows[i]), path) << "row " << i;
    EXPECT_STREQ(rows[i]->defaultText, expected[i].defaultText) << "default of " << path;
    EXPECT_EQ(static_cast<int>(rows[i]->form), static_cast<int>(expected[i].form)) << "form of " << path;
  }
}

}  // namespace

TEST(Schema, ReadsTheStoredSettingsInTheirOrderWithTheirDefaults) {
  const std::vector<std::string> keys = ExpectedItemKeys();
  std::vector<Expected> expected = ExpectedItemRows(keys);
  expected.insert(expected.end(), std::begin(kReadByReadStoredSettings), std::end(kReadByReadStoredSettings));
  ExpectRows(SettingReader::ReadStoredSettings, expected);
}

TEST(Schema, LeavesTheShredderBoxAndLevelToTheControls) {
  ExpectRows(SettingReader::LoadEraseSettings, {std::begin(kReadByLoadEraseSettings), std::end(kReadByLoadEraseSettings)});
}

TEST(Schema, LeavesTheWarningAndTheCaptionToTheirOwners) {
  ExpectRows(SettingReader::Elsewhere, {std::begin(kReadElsewhere), std::end(kReadElsewhere)});
}

TEST(Schema, WritesTheSettingsInTheirOrder) {
  std::vector<std::string> saved;
  for (const Setting setting : SaveOrder()) saved.push_back(PathOf(SchemaRow(setting)));
  std::vector<std::string> expected;
  for (const std::string& key : ExpectedItemKeys()) expected.push_back("CleanSettings/" + key);
  expected.insert(expected.end(), kSaved.begin(), kSaved.end());
  EXPECT_THAT(saved, testing::ElementsAreArray(expected));
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
  EXPECT_EQ(positions.size(), kSavedCount);
  EXPECT_EQ(*positions.begin(), 1);
  EXPECT_EQ(*positions.rbegin(), static_cast<int>(kSavedCount));
}

TEST(Schema, HasEachSettingAndEachKeyOnce) {
  const std::size_t others =
      std::size(kReadByReadStoredSettings) + std::size(kReadByLoadEraseSettings) + std::size(kReadElsewhere);
  EXPECT_EQ(kItemFlagCount, kExpectedItems.size());
  EXPECT_EQ(kSettingCount, kItemFlagCount + others);
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
