#include "settings/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
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

// In reading order; the items go before.
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

// "section/key" in the order in which they are written; the items go before.
const std::vector<std::string> kSaved = {
    "Scheduling/ScheduleSecond", "Scheduling/ScheduleHour",  "Scheduling/ScheduleDay", "Scheduling/ScheduleMinutes",
    "Scheduling/ScheduleMin",    "Scheduling/ScheduledTime", "Scheduling/chkOptions",  "Startup/LoadStartup",
    "Startup/Startup",           "Scheduling/Shutdown",      "Scheduling/chkShEnable", "Scheduling/chkRbt",
    "Scheduling/CHKieclose",     "Shredder/txtLevel",
};

std::string PathOf(const SettingRow& row) { return std::string(row.section) + "/" + row.key; }

// The rows that are read in these ways, those of the first way first.
std::vector<const SettingRow*> RowsReadBy(std::initializer_list<ReadBy> ways) {
  std::vector<const SettingRow*> rows;
  for (const ReadBy way : ways)
    for (const SettingRow& row : kSchema)
      if (row.readBy == way) rows.push_back(&row);
  return rows;
}

template <std::size_t Count>
void ExpectRows(std::initializer_list<ReadBy> ways, const Expected (&expected)[Count]) {
  const std::vector<const SettingRow*> rows = RowsReadBy(ways);
  ASSERT_EQ(rows.size(), Count);
  for (std::size_t i = 0; i < Count; ++i) {
    const std::string path = std::string(expected[i].section) + "/" + expected[i].key;
    EXPECT_EQ(PathOf(*rows[i]), path) << "row " << i;
    EXPECT_STREQ(rows[i]->defaultText, expected[i].defaultText) << "default of " << path;
    EXPECT_EQ(static_cast<int>(rows[i]->form), static_cast<int>(expected[i].form)) << "form of " << path;
  }
}

std::vector<std::string> PathsThatAre(Saved saved) {
  std::vector<std::string> paths;
  for (const SettingRow& row : kSchema)
    if (row.saved == saved) paths.push_back(PathOf(row));
  return paths;
}

}  // namespace

TEST(Schema, ReadsTheStoredSettingsInTheirOrderWithTheirDefaults) {
  ExpectRows({ReadBy::StoredSettingsFirst, ReadBy::StoredSettings}, kReadByReadStoredSettings);
}

TEST(Schema, LeavesTheShredderBoxAndLevelToTheControls) { ExpectRows({ReadBy::EraseSettings}, kReadByLoadEraseSettings); }

TEST(Schema, LeavesTheWarningAndTheCaptionToTheirOwners) { ExpectRows({ReadBy::Others}, kReadElsewhere); }

TEST(Schema, WritesTheSettingsInTheirOrder) { EXPECT_THAT(PathsThatAre(Saved::Yes), testing::ElementsAreArray(kSaved)); }

TEST(Schema, SavesNothingOfTheBossKeyTheWarningAndTheCaption) {
  EXPECT_THAT(PathsThatAre(Saved::ByOthers), testing::ElementsAre("Boss/bossKey", "Message_key/Message", "Name/Titile"));
}

TEST(Schema, TicksEveryItemOfANewInstallation) {
  EXPECT_STREQ(kItemSection, "CleanSettings");
  EXPECT_STREQ(kItemDefault, "1");
}

TEST(Schema, HasEachSettingAndEachKeyOnce) {
  EXPECT_EQ(kSettingCount,
            std::size(kReadByReadStoredSettings) + std::size(kReadByLoadEraseSettings) + std::size(kReadElsewhere));
  std::set<std::string> paths;
  for (const SettingRow& row : kSchema) EXPECT_TRUE(paths.insert(PathOf(row)).second) << PathOf(row) << " is there twice";
}

TEST(SchemaRow, IsTheRowOfThatSetting) {
  for (const SettingRow& row : kSchema) EXPECT_EQ(&SchemaRow(row.setting), &row) << PathOf(row);
  const std::pair<Setting, const char*> rows[] = {
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
