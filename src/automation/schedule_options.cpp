#include "automation/schedule_options.h"

#include "platform/plain_text.h"
#include "platform/text_value.h"

namespace automation {
using namespace platform;

namespace {

const char* FlagOf(bool chosen) { return chosen ? "1" : "0"; }

// The first flag that is set decides.
ScheduleMode ModeOf(const StoredSchedule& stored) {
  if (stored.dailyFlag == "1") return ScheduleMode::Daily;
  if (stored.hourlyFlag == "1") return ScheduleMode::Hourly;
  if (stored.minutesFlag == "1") return ScheduleMode::Minutes;
  return ScheduleMode::None;
}

}  // namespace

// The minutes box stays as it is when its own mode is chosen: its number changes through the spin button, which
// keeps it between its limits.
ModeChoice ChoiceOf(ScheduleMode mode) {
  const bool minutes = mode == ScheduleMode::Minutes;
  return {.dailyFlag = FlagOf(mode == ScheduleMode::Daily),
          .hourlyFlag = FlagOf(mode == ScheduleMode::Hourly),
          .minutesFlag = FlagOf(minutes),
          .pickerEnabled = mode == ScheduleMode::Daily,
          .spinEnabled = minutes,
          .minutesBoxEnabled = minutes ? std::nullopt : std::optional<bool>(false),
          .keepsMinutesText = minutes};
}

// The picker takes the texts that also are the option flags; the daily time of an earlier session does not come back.
// The stored values of every installation rely on it.
RestoredSchedule RestoreSchedule(const StoredSchedule& stored) {
  const ScheduleMode mode = ModeOf(stored);
  const std::string minutes = mode == ScheduleMode::Minutes ? TextOf(NumberAtHead(stored.minutesText)) : stored.minutesText;
  const double spin = NumberAtHead(minutes);  // what the tick goes by
  return {.pickerMinute = NumberOf(stored.minutesFlag),
          .pickerHour = NumberOf(stored.hourlyFlag),
          .pickerSecond = NumberOf(stored.second),
          .mode = mode,
          .minutesText = minutes,
          .spin = spin == 0.0 ? 10.0 : spin};
}

}  // namespace automation
