#include "settings/settings_variables.h"

#include <gtest/gtest.h>

using namespace settings;

TEST(SettingsVariables, KeepOneTextPerSetting) {
  SettingsVariables variables;
  for (std::size_t i = 0; i < kSettingCount; ++i) variables[static_cast<Setting>(i)] = "text " + std::to_string(i);
  const SettingsVariables& read = variables;
  for (std::size_t i = 0; i < kSettingCount; ++i) {
    EXPECT_EQ(read[static_cast<Setting>(i)], "text " + std::to_string(i)) << kSchema[i].key;
    EXPECT_EQ(read.text[i], "text " + std::to_string(i)) << kSchema[i].key;
  }
}

TEST(SettingsVariables, BeginEmptyWithTheBossKeyF10) {
  const SettingsVariables variables;
  for (const SettingRow& row : kSchema) EXPECT_EQ(variables[row.setting], "") << row.key;
  EXPECT_FALSE(variables.CloseBrowsers);
  EXPECT_EQ(variables.BossKeyCode, 121);
  EXPECT_EQ(variables.ScheduleTickCount, 0);
}
