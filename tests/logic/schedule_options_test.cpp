#include "automation/schedule_options.h"

#include <gtest/gtest.h>

using namespace automation;

namespace {

StoredSchedule Stored(const char* daily, const char* hourly, const char* minutes, const char* minutesText = "60",
                      const char* second = "0") {
  return {.dailyFlag = daily, .hourlyFlag = hourly, .minutesFlag = minutes, .second = second, .minutesText = minutesText};
}

}  // namespace

TEST(ChoiceOf, GivesTheChosenModeItsFlagAndTakesTheOthersAway) {
  const struct {
    ScheduleMode mode;
    const char* daily;
    const char* hourly;
    const char* minutes;
  } rows[] = {
      {ScheduleMode::Daily, "1", "0", "0"}, {ScheduleMode::Hourly, "0", "1", "0"}, {ScheduleMode::Minutes, "0", "0", "1"}};
  for (const auto& row : rows) {
    const ModeChoice choice = ChoiceOf(row.mode);
    EXPECT_STREQ(choice.dailyFlag, row.daily);
    EXPECT_STREQ(choice.hourlyFlag, row.hourly);
    EXPECT_STREQ(choice.minutesFlag, row.minutes);
  }
}

TEST(ChoiceOf, LetsThePickerBeUsedForTheDailyTimeAlone) {
  EXPECT_TRUE(ChoiceOf(ScheduleMode::Daily).pickerEnabled);
  EXPECT_FALSE(ChoiceOf(ScheduleMode::Hourly).pickerEnabled);
  EXPECT_FALSE(ChoiceOf(ScheduleMode::Minutes).pickerEnabled);
}

TEST(ChoiceOf, LetsTheSpinButtonBeUsedForTheMinutesAloneAndLeavesTheirBoxAsItIs) {
  const ModeChoice minutes = ChoiceOf(ScheduleMode::Minutes);
  EXPECT_TRUE(minutes.spinEnabled);
  EXPECT_TRUE(minutes.keepsMinutesText);
  EXPECT_FALSE(minutes.minutesBoxEnabled.has_value());
  for (const ScheduleMode mode : {ScheduleMode::Daily, ScheduleMode::Hourly}) {
    const ModeChoice other = ChoiceOf(mode);
    EXPECT_FALSE(other.spinEnabled);
    EXPECT_FALSE(other.keepsMinutesText);
    EXPECT_EQ(other.minutesBoxEnabled, std::optional<bool>(false));
  }
}

TEST(RestoreSchedule, TakesTheFirstModeWhoseFlagIsOne) {
  const struct {
    const char* daily;
    const char* hourly;
    const char* minutes;
    ScheduleMode mode;
  } rows[] = {{"0", "0", "0", ScheduleMode::None},   {"1", "1", "1", ScheduleMode::Daily},
              {"0", "1", "1", ScheduleMode::Hourly}, {"0", "0", "1", ScheduleMode::Minutes},
              {"0", "9", "30", ScheduleMode::None},  {"True", "01", "1.0", ScheduleMode::None},
              {"", "", "", ScheduleMode::None}};
  for (const auto& row : rows)
    EXPECT_EQ(static_cast<int>(RestoreSchedule(Stored(row.daily, row.hourly, row.minutes)).mode), static_cast<int>(row.mode))
        << row.daily << ", " << row.hourly << ", " << row.minutes;
}

TEST(RestoreSchedule, SetsThePickerFromTheFlagsOfTheModes) {
  const RestoredSchedule restored = RestoreSchedule(Stored("1", "9", "30", "60", "45"));
  EXPECT_EQ(restored.pickerHour, 9);
  EXPECT_EQ(restored.pickerMinute, 30);
  EXPECT_EQ(restored.pickerSecond, 45);
  EXPECT_EQ(RestoreSchedule(Stored("0", "abc", "", "60", "x")).pickerHour, 0);
}

TEST(RestoreSchedule, ShowsTheMinutesAsTheNumberThatTheyAreForTheirOwnModeAlone) {
  EXPECT_EQ(RestoreSchedule(Stored("0", "0", "1", " 007 ")).minutesText, "7");
  EXPECT_EQ(RestoreSchedule(Stored("0", "0", "1", "abc")).minutesText, "0");
  EXPECT_EQ(RestoreSchedule(Stored("0", "1", "0", " 007 ")).minutesText, " 007 ");
}

// "60 minutes" is no number, and every sixty minutes to the tick: not every minute, which is what 0 would be.
TEST(RestoreSchedule, TakesTheNumberOfMinutesThatTheTickTakes) {
  const RestoredSchedule chosen = RestoreSchedule(Stored("0", "0", "1", "60 minutes"));
  EXPECT_EQ(chosen.minutesText, "60");
  EXPECT_EQ(chosen.spin, 60);
  EXPECT_EQ(RestoreSchedule(Stored("1", "0", "0", "15min")).spin, 15);
}

TEST(RestoreSchedule, SetsTheSpinButtonToTenWhereThereIsNoNumber) {
  for (const char* none : {"", "abc", "0", "0.0"}) EXPECT_EQ(RestoreSchedule(Stored("0", "0", "0", none)).spin, 10) << none;
  EXPECT_EQ(RestoreSchedule(Stored("0", "0", "1", "5")).spin, 5);
  EXPECT_EQ(RestoreSchedule(Stored("0", "0", "0", "-5")).spin, -5) << "the button refuses it, the rule does not";
}
