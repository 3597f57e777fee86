// What the controls of the schedule show and allow, told from texts: facts in, control states and flags out.
#pragma once

#include <optional>
#include <string>

namespace automation {

// The option buttons, by their index; none is chosen at first.
enum class ScheduleMode { None = -1, Daily, Hourly, Minutes };

// Choosing an option: the flags of the three modes, and what can be used then.
struct ModeChoice {
  const char* dailyFlag;
  const char* hourlyFlag;
  const char* minutesFlag;
  bool pickerEnabled;
  bool spinEnabled;
  std::optional<bool> minutesBoxEnabled;  // none: stays as it is
  bool keepsMinutesText;                  // the box's text becomes the stored number of minutes
};
ModeChoice ChoiceOf(ScheduleMode mode);

// The schedule as it is stored. The flags of the every-hour and the every-N-minutes option also are the picker's hour and
// minutes.
struct StoredSchedule {
  std::string dailyFlag;
  std::string hourlyFlag;
  std::string minutesFlag;
  std::string second;
  std::string minutesText;
};

// What the controls take from it at the start, each number as it is: a control that cannot show it refuses it.
struct RestoredSchedule {
  double pickerMinute;
  double pickerHour;
  double pickerSecond;
  ScheduleMode mode;
  std::string minutesText;  // in the box
  double spin;
};
RestoredSchedule RestoreSchedule(const StoredSchedule& stored);

}  // namespace automation
