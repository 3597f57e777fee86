#include "settings/settings_coupling.h"

#include <gtest/gtest.h>

using namespace settings;

namespace {

SettingsVariables Marked() {
  SettingsVariables settings;
  for (const SettingRow& row : kSchema) settings[row.setting] = std::string("kept ") + row.key;
  return settings;
}

void ExpectOnlyChanged(const SettingsVariables& settings, std::initializer_list<Setting> changed) {
  for (const SettingRow& row : kSchema) {
    bool mayChange = false;
    for (const Setting setting : changed) mayChange = mayChange || setting == row.setting;
    if (!mayChange) EXPECT_EQ(settings[row.setting], std::string("kept ") + row.key);
  }
}

}  // namespace

TEST(CopyScheduleTexts, PutsTheBoxAndThePickerIntoTheirVariables) {
  SettingsVariables settings = Marked();
  CopyScheduleTexts(settings, "15", {"30", "9", "7"});
  EXPECT_EQ(settings[Setting::ScheduleMin], "15");
  EXPECT_EQ(settings[Setting::ScheduleMinutes], "30");
  EXPECT_EQ(settings[Setting::ScheduleHour], "9");
  EXPECT_EQ(settings[Setting::ScheduleSecond], "7");
  ExpectOnlyChanged(settings,
                    {Setting::ScheduleMin, Setting::ScheduleMinutes, Setting::ScheduleHour, Setting::ScheduleSecond});
}

TEST(CopyScheduleTexts, OverwritesTheFlagOfTheEveryHourOption) {
  SettingsVariables settings;
  settings[Setting::ScheduleDay] = "0";
  settings[Setting::ScheduleHour] = "1";
  settings[Setting::ScheduleMinutes] = "0";
  CopyScheduleTexts(settings, "60", {"0", "9", "0"});
  EXPECT_EQ(settings[Setting::ScheduleHour], "9");
  EXPECT_EQ(settings[Setting::ScheduleDay], "0");
}

TEST(CopyScheduleTexts, TakesTheTextsAsTheyStand) {
  SettingsVariables settings;
  CopyScheduleTexts(settings, "", {" 05 ", "abc", ""});
  EXPECT_EQ(settings[Setting::ScheduleMin], "");
  EXPECT_EQ(settings[Setting::ScheduleMinutes], " 05 ");
  EXPECT_EQ(settings[Setting::ScheduleHour], "abc");
  EXPECT_EQ(settings[Setting::ScheduleSecond], "");
}

TEST(CoupleStartupFlags, EndsErasingAtStartUpWithoutLoadingAtStartUp) {
  const struct {
    const char* loadStartup;
    const char* startup;
    const char* after;
  } rows[] = {{"0", "1", "0"}, {"0", "0", "0"}, {"1", "1", "1"}, {"1", "0", "0"}, {"", "1", "1"}};
  for (const auto& row : rows) {
    SettingsVariables settings = Marked();
    settings[Setting::LoadStartup] = row.loadStartup;
    settings[Setting::Startup] = row.startup;
    CoupleStartupFlags(settings);
    EXPECT_EQ(settings[Setting::Startup], row.after) << "LoadStartup [" << row.loadStartup << "], Startup " << row.startup;
    EXPECT_EQ(settings[Setting::LoadStartup], row.loadStartup);
    ExpectOnlyChanged(settings, {Setting::LoadStartup, Setting::Startup});
  }
}
