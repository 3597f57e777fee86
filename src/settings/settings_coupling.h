// What saving does to the variables before it writes them: rules over plain values.
#pragma once

#include <string>

#include "settings/settings_variables.h"

namespace settings {

struct PickerTexts {
  std::string minute;
  std::string hour;
  std::string second;
};

// The picker's texts go into the variables that are also the flags of the every-hour and every-N-minutes options, so that
// one stored text serves as both. The stored values of every installation have this form: after saving with 9 o'clock in the
// picker, the next start does not choose the every-hour option.
inline void CopyScheduleTexts(SettingsVariables& settings, const std::string& txtMinutes, const PickerTexts& picker) {
  settings[Setting::ScheduleMin] = txtMinutes;
  settings[Setting::ScheduleMinutes] = picker.minute;
  settings[Setting::ScheduleHour] = picker.hour;
  settings[Setting::ScheduleSecond] = picker.second;
}

// Erasing at start-up can never stay on without loading at start-up.
inline void CoupleStartupFlags(SettingsVariables& settings) {
  if (settings[Setting::LoadStartup] == "0") settings[Setting::Startup] = "0";
}

}  // namespace settings
