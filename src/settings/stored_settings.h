// Moving values between the store and the settings variables. The controls' share of loading and saving is the main
// window's (frmMain).
#pragma once

#include <string>

#include "settings/settings_variables.h"

namespace settings {

// Reads every value of the schema that has a variable, in the schema's order, each trimmed of blanks; sets the
// scheduler's tick counter to 0. A value that fails leaves its variable as it was, and reading goes on.
void ReadStoredSettings();

// What SaveEraseSettings takes from controls rather than from variables.
struct ControlTexts {
  std::string txtMinutes;
  std::string pickerMinute;
  std::string pickerHour;
  std::string pickerSecond;
  std::string chkOptions;
  std::string txtLevel;
};

// Copies the four schedule texts into their variables and writes everything in the schema's save order. Raises the first
// error; what comes after it is then not written.
void WriteStoredSettings(const ControlTexts& controls);

}  // namespace settings
