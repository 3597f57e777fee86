// The scheduler's tick, once a minute: whether an erase is due now.
#pragma once

#include <cstdint>
#include <string>

namespace automation {

// A time of day as the daily test compares it: "hh:mm" with the hours 01 to 12, a blank, and the locale's designator of
// the half of the day. In a locale without designators a time and the one twelve hours later read alike.
struct DayHalves {
  std::string am;
  std::string pm;
};

// How the picker shows a time: in 24 hours where the locale has no designators, so that 9:00 is not taken for 21:00.
const char* PickerFormat(const DayHalves& designators);

std::string TimeText(int hour, int minute, const DayHalves& designators);

// What the tick looks at. The flags are the settings' texts, "1" for a chosen mode.
struct ScheduleFacts {
  bool enabled;             // chkShEnable is checked
  std::string hourlyFlag;   // "ScheduleHour"
  bool dailyChosen;         // the option button itself, not its flag
  std::string minutesFlag;  // "ScheduleMinutes"
  std::string minutesText;  // txtMinutes
  std::string now;          // TimeText of the clock and of the picker
  std::string picked;
  bool somethingAsked = false;  // a message or a window is open that the user has to close first
};

// Advances the count of ticks since the last scheduled run (up to 32767, where it stays) and sets it back to 0 when an
// erase is due. While the schedule is off, nothing counts. While something is asked no erase is due and the count goes on:
// one that is due by the count comes at the first tick afterwards.
bool IsEraseDue(std::int16_t& tickCount, const ScheduleFacts& facts);

}  // namespace automation
