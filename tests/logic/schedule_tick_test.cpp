// The schedule over simulated days: a clock, the controls of the panel, and the scheduler's tick once a minute.
#include "automation/schedule_tick.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/runtime_error.h"

using namespace automation;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kHour = 60, kDay = 24 * kHour, kWeek = 7 * kDay;
constexpr int kNone = -1, kDaily = 0, kHourly = 1, kMinutes = 2;

// Minutes since midnight, as "9:05" reads.
constexpr int At(int hour, int minute = 0) { return hour * kHour + minute; }

// The panel and the clock as the tick sees them.
struct Simulation {
  bool enabled = true;
  int mode = kNone;
  int picked = At(0);
  std::string minutesText = "60";
  DayHalves halves{"AM", "PM"};
  int clock = At(0);
  std::int16_t count = 0;
  bool somethingAsked = false;

  ScheduleFacts Facts() const {
    const int now = (clock % kDay + kDay) % kDay;
    return {enabled,
            mode == kHourly ? "1" : "0",
            mode == kDaily,
            mode == kMinutes ? "1" : "0",
            minutesText,
            TimeText(now / kHour, now % kHour, halves),
            TimeText(picked / kHour, picked % kHour, halves),
            somethingAsked};
  }

  // A minute passes.
  bool Tick() {
    ++clock;
    return IsEraseDue(count, Facts());
  }

  // The ticks that start a run, counted from 1.
  std::vector<int> Runs(int ticks) {
    std::vector<int> runs;
    for (int tick = 1; tick <= ticks; ++tick)
      if (Tick()) runs.push_back(tick);
    return runs;
  }

  // The times of day at which a run starts, as minutes since midnight.
  std::vector<int> TimesOfRuns(int ticks) {
    std::vector<int> times;
    for (int tick = 0; tick < ticks; ++tick)
      if (Tick()) times.push_back(clock % kDay);
    return times;
  }
};

// Every so many ticks from the first one on.
std::vector<int> Every(int step, int ticks) {
  std::vector<int> runs;
  for (int tick = step; tick <= ticks; tick += step) runs.push_back(tick);
  return runs;
}

Simulation InMode(int mode) {
  Simulation simulation;
  simulation.mode = mode;
  return simulation;
}

Simulation EveryMinutes(const std::string& text) {
  Simulation simulation = InMode(kMinutes);
  simulation.minutesText = text;
  return simulation;
}

Simulation DailyAt(int picked) {
  Simulation simulation = InMode(kDaily);
  simulation.picked = picked;
  return simulation;
}

}  // namespace

TEST(TimeText, HasTwelveHoursWithTwoDigitsAndTheHalfOfTheDay) {
  const DayHalves halves{"AM", "PM"};
  const char* hours[] = {"12", "01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11"};
  for (int hour = 0; hour < 24; ++hour)
    EXPECT_EQ(TimeText(hour, 7, halves), std::string(hours[hour % 12]) + ":07 " + (hour < 12 ? "AM" : "PM")) << hour;
}

TEST(TimeText, HasMinutesWithTwoDigits) {
  const DayHalves halves{"AM", "PM"};
  EXPECT_EQ(TimeText(9, 0, halves), "09:00 AM");
  EXPECT_EQ(TimeText(9, 9, halves), "09:09 AM");
  EXPECT_EQ(TimeText(9, 10, halves), "09:10 AM");
  EXPECT_EQ(TimeText(23, 59, halves), "11:59 PM");
}

TEST(TimeText, TellsMidnightFromNoon) {
  const DayHalves halves{"AM", "PM"};
  EXPECT_EQ(TimeText(0, 0, halves), "12:00 AM");
  EXPECT_EQ(TimeText(12, 0, halves), "12:00 PM");
}

TEST(TimeText, TakesTheDesignatorsOfTheLocaleAsTheyStand) {
  EXPECT_EQ(TimeText(9, 0, {"vorm.", "nachm."}), "09:00 vorm.");
  EXPECT_EQ(TimeText(21, 0, {"vorm.", "nachm."}), "09:00 nachm.");
}

TEST(TimeText, ReadsTheSameTwelveHoursLaterInALocaleWithoutDesignators) {
  EXPECT_EQ(TimeText(9, 0, {"", ""}), TimeText(21, 0, {"", ""}));
  EXPECT_EQ(TimeText(0, 0, {"", ""}), TimeText(12, 0, {"", ""}));
}

TEST(TimeText, IsAnotherOneForEachMinuteOfTheDay) {
  std::vector<std::string> texts;
  for (int minute = 0; minute < kDay; ++minute) texts.push_back(TimeText(minute / kHour, minute % kHour, {"AM", "PM"}));
  std::sort(texts.begin(), texts.end());
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end());
}

TEST(AScheduleThatIsOff, NeitherCountsNorRuns) {
  for (const int mode : {kNone, kDaily, kHourly, kMinutes}) {
    Simulation off = InMode(mode);
    off.enabled = false;
    off.minutesText = "0";
    EXPECT_THAT(off.Runs(2 * kDay), IsEmpty()) << "mode " << mode;
    EXPECT_EQ(off.count, 0) << "mode " << mode;
  }
}

TEST(AScheduleThatIsOff, KeepsItsCountAndGoesOnFromThereWhenItIsOnAgain) {
  Simulation hourly = InMode(kHourly);
  EXPECT_THAT(hourly.Runs(40), IsEmpty());
  hourly.enabled = false;
  EXPECT_THAT(hourly.Runs(kDay), IsEmpty());
  EXPECT_EQ(hourly.count, 40);
  hourly.enabled = true;
  EXPECT_THAT(hourly.Runs(80), ElementsAre(20, 80));
}

TEST(AScheduleWithoutAMode, CountsUpToTheLargestNumberStaysThereAndNeverRuns) {
  Simulation none;
  EXPECT_THAT(none.Runs(32766), IsEmpty());
  EXPECT_EQ(none.count, 32766);
  EXPECT_FALSE(none.Tick());
  EXPECT_EQ(none.count, 32767);
  EXPECT_THAT(none.Runs(kWeek), IsEmpty());
  EXPECT_EQ(none.count, 32767);
}

TEST(AScheduleWithoutAMode, IsWhatFlagsOtherThanOneMake) {
  // The stored texts are shared with the picker: an hour or a minute other than 1 is no mode.
  for (const char* flag : {"0", "", "9", "01", " 1", "1 ", "1.0", "True", "-1", "11"}) {
    std::int16_t count = 59;
    const ScheduleFacts facts{true, flag, false, flag, "0", "09:00 AM", "09:00 AM"};
    EXPECT_FALSE(IsEraseDue(count, facts)) << "[" << flag << "]";
    EXPECT_EQ(count, 60) << "[" << flag << "]";
  }
}

TEST(HourlyMode, RunsSixtyTicksAfterTheStartAndNotAtTheTopOfTheHour) {
  Simulation hourly = InMode(kHourly);
  hourly.clock = At(10, 17);
  EXPECT_THAT(hourly.TimesOfRuns(3 * kHour), ElementsAre(At(11, 17), At(12, 17), At(13, 17)));
}

TEST(HourlyMode, RunsEveryHourOfAWeek) {
  Simulation hourly = InMode(kHourly);
  EXPECT_EQ(hourly.Runs(kWeek), Every(60, kWeek));
}

TEST(HourlyMode, CountsTicksWhateverTheClockSays) {
  Simulation hourly = InMode(kHourly);
  hourly.Runs(30);
  hourly.clock -= 5 * kDay;  // the clock is set back
  EXPECT_THAT(hourly.Runs(30), ElementsAre(30));
  hourly.clock += kDay / 2;
  EXPECT_THAT(hourly.Runs(60), ElementsAre(60));
}

TEST(HourlyMode, LooksNeitherAtThePickerNorAtTheMinutesBox) {
  Simulation hourly = InMode(kHourly);
  hourly.minutesText = "0";
  for (int minute = 0; minute < kDay; minute += 61) {
    hourly.picked = minute;
    EXPECT_EQ(hourly.Runs(kDay), Every(60, kDay));
  }
}

TEST(DailyMode, RunsOnceADayAtThePickersMinute) {
  for (int picked = 0; picked < kDay; picked += 7) {
    Simulation daily = DailyAt(picked);
    ASSERT_THAT(daily.TimesOfRuns(kDay), ElementsAre(picked));
  }
}

TEST(DailyMode, RunsEveryDayOfAWeek) {
  Simulation daily = DailyAt(At(9));
  daily.clock = At(13, 30);
  EXPECT_EQ(daily.TimesOfRuns(kWeek), std::vector<int>(7, At(9)));
}

TEST(DailyMode, RunsAtMidnight) {
  Simulation daily = DailyAt(At(0));
  daily.clock = At(23, 58);
  EXPECT_THAT(daily.Runs(kDay + 2), ElementsAre(2, kDay + 2));
}

TEST(DailyMode, TellsMorningFromEvening) {
  Simulation morning = DailyAt(At(9)), evening = DailyAt(At(21));
  EXPECT_THAT(morning.TimesOfRuns(kDay), ElementsAre(At(9)));
  EXPECT_THAT(evening.TimesOfRuns(kDay), ElementsAre(At(21)));
}

TEST(DailyMode, RunsTwiceADayInALocaleWithoutDesignators) {
  const auto timesFor = [](int picked) {
    Simulation daily = DailyAt(picked);
    daily.halves = {"", ""};
    return daily.TimesOfRuns(kDay);
  };
  for (const int picked : {At(9), At(21)}) EXPECT_THAT(timesFor(picked), ElementsAre(At(9), At(21)));
  for (const int picked : {At(0), At(12)}) EXPECT_THAT(timesFor(picked), ElementsAre(At(12), At(0)));
}

TEST(DailyMode, LeavesOutTheDayOnWhichTheClockSkipsItsHour) {
  Simulation daily = DailyAt(At(2, 30));
  daily.clock = At(1, 58);
  EXPECT_FALSE(daily.Tick());
  daily.clock += kHour;  // from 1:59 to 3:00
  EXPECT_THAT(daily.Runs(At(20)), IsEmpty());
  EXPECT_THAT(daily.TimesOfRuns(kDay), ElementsAre(At(2, 30)));
}

TEST(DailyMode, RunsAgainWhenTheClockRepeatsItsHour) {
  Simulation daily = DailyAt(At(2, 30));
  daily.clock = At(2);
  EXPECT_THAT(daily.Runs(59), ElementsAre(30));
  daily.clock -= kHour;  // from 2:59 back to 2:00
  EXPECT_THAT(daily.Runs(kHour), ElementsAre(31));
}

TEST(DailyMode, IsNotGuardedAgainstATimerThatDriftsAcrossTheMinute) {
  const auto runsWithTicksEvery = [](int seconds, int picked) {
    Simulation daily = DailyAt(picked);
    int runs = 0;
    for (int second = seconds; second < 2 * 60 * kHour; second += seconds) {
      daily.clock = second / 60;
      if (IsEraseDue(daily.count, daily.Facts())) ++runs;
    }
    return runs;
  };
  EXPECT_EQ(runsWithTicksEvery(60, At(0, 59)), 1);
  EXPECT_EQ(runsWithTicksEvery(59, At(0, 59)), 2) << "at 0:59:00 and at 0:59:59";
  EXPECT_EQ(runsWithTicksEvery(61, At(1, 0)), 0) << "at 0:59:59 and at 1:01:00";
}

TEST(DailyMode, LooksAtTheOptionButtonAndNotAtAFlag) {
  std::int16_t count = 0;
  EXPECT_FALSE(IsEraseDue(count, {true, "0", false, "0", "0", "09:00 AM", "09:00 AM"}));
  EXPECT_TRUE(IsEraseDue(count, {true, "0", true, "0", "60", "09:00 AM", "09:00 AM"}));
}

TEST(DailyMode, ComparesTheTextsAsTheyStand) {
  std::int16_t count = 0;
  for (const char* other : {"09:00 PM", "09:01 AM", "10:00 AM", "09:00 am", "9:00 AM", "09:00", ""})
    EXPECT_FALSE(IsEraseDue(count, {true, "0", true, "0", "60", "09:00 AM", other})) << "[" << other << "]";
}

TEST(MinutesMode, RunsEverySoManyTicksFromTheStart) {
  for (const int minutes : {1, 2, 5, 59, 60, 61, 1440}) {
    Simulation every = EveryMinutes(std::to_string(minutes));
    EXPECT_EQ(every.Runs(kWeek), Every(minutes, kWeek)) << minutes;
  }
}

TEST(MinutesMode, RunsAtEveryTickForZeroALessNumberAndATextWithoutOne) {
  for (const char* text : {"0", "", " ", "abc", "-5", "-0", "minutes 5", "Five", "0.5", ".", "-", "0 minutes"}) {
    Simulation every = EveryMinutes(text);
    EXPECT_EQ(every.Runs(100), Every(1, 100)) << "[" << text << "]";
  }
}

TEST(MinutesMode, TakesTheNumberAtTheHeadOfTheText) {
  for (const char* text : {"5 minutes", " 5", "5,9", "5x", "5.0", "+5", "05", "4.5"}) {
    Simulation every = EveryMinutes(text);
    EXPECT_EQ(every.Runs(100), Every(5, 100)) << "[" << text << "]";
  }
}

TEST(MinutesMode, RunsAtTheLargestCountAndNeverForANumberBeyondIt) {
  Simulation largest = EveryMinutes("32767");
  EXPECT_THAT(largest.Runs(70000), ElementsAre(32767, 65534));
  for (const char* text : {"32768", "99999999999", "1e9", "32767.5"}) {
    Simulation beyond = EveryMinutes(text);
    EXPECT_THAT(beyond.Runs(70000), IsEmpty()) << text;
    EXPECT_EQ(beyond.count, 32767) << text;
  }
}

TEST(MinutesMode, GoesOnCountingWhenTheNumberIsTooLargeToBeOne) {
  Simulation every = EveryMinutes("1e999");
  for (int tick = 1; tick <= 3; ++tick) EXPECT_THROW(every.Tick(), RuntimeError);
  EXPECT_EQ(every.count, 3);
  every.minutesText = "4";
  EXPECT_TRUE(every.Tick());
}

TEST(MinutesMode, ReadsTheBoxAnewAtEachTick) {
  Simulation every = EveryMinutes("60");
  EXPECT_THAT(every.Runs(20), IsEmpty());
  every.minutesText = "10";  // below the count: the next tick runs
  EXPECT_THAT(every.Runs(21), ElementsAre(1, 11, 21));
  every.minutesText = "30";
  EXPECT_THAT(every.Runs(60), ElementsAre(30, 60));
}

TEST(ASwitchOfModes, LeavesTheCountAlone) {
  // From each mode to each other one; the count that has been reached decides about the next tick.
  for (const int from : {kNone, kDaily, kMinutes}) {
    Simulation toHourly = EveryMinutes("500");
    toHourly.mode = from;
    toHourly.picked = At(23);
    EXPECT_THAT(toHourly.Runs(70), IsEmpty());
    toHourly.mode = kHourly;
    EXPECT_THAT(toHourly.Runs(61), ElementsAre(1, 61)) << "from mode " << from;
  }
  for (const int from : {kNone, kDaily, kHourly}) {
    Simulation toMinutes = EveryMinutes("30");
    toMinutes.mode = from;
    toMinutes.picked = At(23);
    EXPECT_THAT(toMinutes.Runs(40), IsEmpty());
    toMinutes.mode = kMinutes;
    EXPECT_THAT(toMinutes.Runs(31), ElementsAre(1, 31)) << "from mode " << from;
  }
  for (const int from : {kNone, kHourly, kMinutes}) {
    Simulation toDaily = EveryMinutes("500");
    toDaily.mode = from;
    toDaily.picked = At(1);
    EXPECT_THAT(toDaily.Runs(50), IsEmpty());
    toDaily.mode = kDaily;
    EXPECT_THAT(toDaily.Runs(kHour), ElementsAre(10)) << "from mode " << from;
  }
}

TEST(ASwitchOfModes, CountsFromTheLastRunWhicheverModeThatCameFrom) {
  Simulation daily = DailyAt(At(1));
  EXPECT_THAT(daily.Runs(90), ElementsAre(60));
  daily.mode = kHourly;
  EXPECT_THAT(daily.Runs(60), ElementsAre(30));
}

TEST(ASwitchOfModes, AfterTheCountHasReachedItsEndRunsAtOnce) {
  for (const int mode : {kHourly, kMinutes}) {
    Simulation late;
    late.Runs(40000);
    late.mode = mode;
    EXPECT_THAT(late.Runs(120), ElementsAre(1, 61)) << "mode " << mode;
  }
}

TEST(SeveralModesAtOnce, AreLookedAtAsHourlyDailyMinutesAndStartOneRunATick) {
  // No click chooses more than one, stored texts may: the hourly flag is "1" as well when the picker showed one o'clock.
  std::int16_t count = 59;
  const ScheduleFacts all{true, "1", true, "1", "10", "09:00 AM", "09:00 AM"};
  EXPECT_TRUE(IsEraseDue(count, all));
  EXPECT_EQ(count, 0);

  const ScheduleFacts hourlyAndMinutes{true, "1", false, "1", "10", "09:00 AM", "09:00 AM"};
  for (int tick = 1; tick < 10; ++tick) EXPECT_FALSE(IsEraseDue(count, hourlyAndMinutes));
  EXPECT_TRUE(IsEraseDue(count, hourlyAndMinutes)) << "the minutes come first, below sixty ticks";
  EXPECT_EQ(count, 0);

  const ScheduleFacts hourlyAndDaily{true, "1", true, "0", "10", "09:00 AM", "09:00 AM"};
  EXPECT_TRUE(IsEraseDue(count, hourlyAndDaily)) << "the daily test is reached below sixty ticks";
}

TEST(SeveralModesAtOnce, DoNotReadTheMinutesWhenAnEarlierOneIsDue) {
  std::int16_t count = 59;
  EXPECT_TRUE(IsEraseDue(count, {true, "1", false, "1", "1e999", "09:00 AM", "10:00 AM"}));
  EXPECT_TRUE(IsEraseDue(count, {true, "0", true, "1", "1e999", "09:00 AM", "09:00 AM"}));
}

TEST(ATickWhileSomethingIsAsked, StartsNothingAndCounts) {
  Simulation everyFive = EveryMinutes("5");
  everyFive.somethingAsked = true;
  EXPECT_THAT(everyFive.Runs(7), IsEmpty());
  everyFive.somethingAsked = false;
  EXPECT_THAT(everyFive.Runs(6), ElementsAre(1, 6)) << "the one that was due, and the next one five minutes after it";
}

TEST(ATickWhileSomethingIsAsked, LetsTheDailyMinutePass) {
  Simulation daily = DailyAt(At(0, 1));
  daily.somethingAsked = true;
  EXPECT_THAT(daily.Runs(1), IsEmpty());
  daily.somethingAsked = false;
  EXPECT_THAT(daily.Runs(kDay), ElementsAre(kDay));
}

TEST(PickerFormat, TellsTheHalvesOfTheDayApartInEveryLocale) {
  EXPECT_STREQ(PickerFormat({.am = "AM", .pm = "PM"}), "hh:mm tt");
  EXPECT_STREQ(PickerFormat({.am = "", .pm = "du."}), "hh:mm tt");
  EXPECT_STREQ(PickerFormat({.am = "", .pm = ""}), "HH:mm");
}
