#include "erase/erase_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "erase/run_in_progress.h"
#include "fake_erase_run_host.h"

using namespace erase;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const char kStopped[] = "Erasing was manually stopped.";
const char kErased[] = "Quellix has successfully erased selected item(s).";
const std::string kFullRange = "bar range 0 to " + std::to_string(kFullBar);

// What one item does when the bar is at `value` afterwards.
Lines ActionsOf(const ExpectedItem& item, int value) {
  Lines actions = {"bar value " + std::to_string(value)};
  if (item.logLine != nullptr) actions.push_back(std::string("log: ") + item.logLine);
  if (item.logLine != nullptr) actions.push_back("clean " + NameOf(item.array, item.index));
  if (item.secondLogLine != nullptr) actions.push_back(std::string("log: ") + item.secondLogLine);
  actions.push_back("pause");
  return actions;
}

Lines& Append(Lines& lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

// The actions of a run, its bar from 0 to `max`, over the first `count` of the items that run.
Lines RunOver(std::size_t count, int max, const char* lastLine) {
  Lines actions = {"clear log", "status: Please Wait .."};
  for (std::size_t i = 0; i < count; ++i) Append(actions, ActionsOf(kItemsThatRun[i], static_cast<int>(i + 1) * 10));
  return Append(actions, {"log: ", std::string("log: ") + lastLine, "bar value " + std::to_string(max), "status: Ready"});
}

// Presses Stop within the n-th call of that text, counted from 1.
std::function<void(const std::string&)> StopAt(FakeEraseRunHost& host, const std::string& call, std::size_t n = 1) {
  return [&host, call, n](const std::string& now) {
    if (now == call && host.CountOf(call) == n) host.stop = true;
  };
}

}  // namespace

TEST(EraseOnly, RunsTheSelectedItemsInTheirOrderAndEndsWithAFullBar) {
  FakeEraseRunHost host;
  host.TickAll();
  RunEraseOnly(host);
  Lines expected = {"show bar", kFullRange, "stop button on", "stop request cleared"};
  Append(expected, RunOver(kItemsThatRun.size(), kFullBar, kErased));
  Append(expected, {"stop button off", "stop request set"});
  EXPECT_THAT(host.Actions(), ElementsAreArray(expected));
  EXPECT_EQ(host.value, kFullBar);
  EXPECT_EQ(host.status, "Ready");
}

TEST(EraseOnly, RunsEachItemOnItsOwn) {
  for (const ExpectedItem& item : kItemsThatRun) {
    FakeEraseRunHost host;
    host.Tick(item.array, item.index);
    RunEraseOnly(host);
    Lines expected = {"show bar",  "bar range 0 to 10",     "stop button on", "stop request cleared",
                      "clear log", "status: Please Wait .."};
    Append(expected, ActionsOf(item, 10));
    Append(expected, {"log: ", std::string("log: ") + kErased, "bar value 10", "status: Ready", "stop button off",
                      "stop request set"});
    EXPECT_THAT(host.Actions(), ElementsAreArray(expected)) << NameOf(item.array, item.index);
  }
}

TEST(EraseOnly, FillsTheBarWithoutWorkForABoxThatNeverRuns) {
  for (const ExpectedItem& item : kItemsThatNeverRun) {
    FakeEraseRunHost host;
    host.Tick(item.array, item.index);
    RunEraseOnly(host);
    EXPECT_THAT(host.log, ElementsAre("", kErased)) << NameOf(item.array, item.index);
    EXPECT_EQ(host.max, 10);
    EXPECT_EQ(host.value, 10);
    EXPECT_EQ(host.CountOf("pause"), 0u);
    EXPECT_EQ(host.CountOf("? flag " + NameOf(item.array, item.index)), 0u) << "its flag is not looked at";
  }
}

TEST(EraseOnly, AdvancesAndPausesForRecentFilesButWritesNoLine) {
  FakeEraseRunHost host;
  host.Tick(kWin, 7);
  host.Tick(kWin, 8);
  RunEraseOnly(host);
  EXPECT_THAT(host.log, ElementsAre("Erasing Erase Registry Fragment...", "", kErased));
  EXPECT_EQ(host.CountOf("bar value 10"), 1u);
  EXPECT_EQ(host.CountOf("pause"), 2u);
}

TEST(EraseOnly, WritesTwoLinesForTheNetscapeCacheAroundItsCleaner) {
  FakeEraseRunHost host;
  host.Tick(kNet, 3);
  RunEraseOnly(host);
  EXPECT_THAT(host.log, ElementsAre("Erasing Netscape Cache...", "Erasing Netscape Cookies...", "", kErased));
}

TEST(EraseOnly, RunsTheSecondCleanerOfAnItemAlsoWhenTheFirstFails) {
  FakeEraseRunHost host;
  host.items.At(0).secondCleaner = ItemsToRun::Another();
  host.Tick(kIe, 0);
  host.onCall = [](const std::string& call) {
    if (call == "clean chkIEsettings 0") Raise(kPermissionDenied);
  };
  RunEraseOnly(host);
  EXPECT_EQ(host.CountOf("clean chkIEsettings 0"), 1u);
  EXPECT_EQ(host.CountOf("clean unknown"), 1u);
  EXPECT_EQ(host.CountOf("pause"), 1u);
  Err.Clear();
}

TEST(EraseOnly, TakesTheLogOfTheRunBeforeAway) {
  FakeEraseRunHost host;
  host.log = {"of an earlier run"};
  host.Tick(kIe, 0);
  RunEraseOnly(host);
  RunEraseOnly(host);
  EXPECT_THAT(host.log, ElementsAre("Erasing Internet Location Bar History...", "", kErased));
}

TEST(EraseOnly, DoesNothingWhileARunIsInProgress) {
  FakeEraseRunHost host;
  host.TickAll();
  host.closeBrowsersFlag = true;
  const RunScope another;
  RunEraseOnly(host);
  EXPECT_THAT(host.calls, IsEmpty());
}

TEST(EraseOnly, DoesNothingWhileAnEarlierPressIsStillClosingBrowsers) {
  FakeEraseRunHost host;
  host.TickAll();
  host.closeBrowsersFlag = true;
  Lines within;
  host.onCall = [&](const std::string& call) {
    if (call != "close browser frames") return;
    const std::size_t before = host.calls.size();
    RunEraseOnly(host);
    RunEraseAndReboot(host);
    within.assign(host.calls.begin() + static_cast<std::ptrdiff_t>(before), host.calls.end());
  };
  RunEraseOnly(host);
  EXPECT_THAT(within, ElementsAre("show bar"));
  EXPECT_EQ(host.CountOf("clear log"), 1u);
}

TEST(EraseOnly, IsOverWhenItReturnsWhateverFailed) {
  for (const bool fails : {false, true}) {
    FakeEraseRunHost host;
    host.Tick(kIe, 0);
    host.onCall = [fails](const std::string& call) {
      EXPECT_TRUE(RunInProgress) << call;
      if (fails && call == "stop button on") Raise(kPermissionDenied);
    };
    RunEraseOnly(host);
    EXPECT_FALSE(RunInProgress);
  }
}

TEST(EraseOnly, DoesNothingWhenPressedWithinItsOwnRun) {
  FakeEraseRunHost host;
  host.Tick(kIe, 0);
  Lines within;
  host.onCall = [&](const std::string& call) {
    if (call != "pause") return;
    const std::size_t before = host.calls.size();
    RunEraseOnly(host);
    RunEraseAndReboot(host);
    within.assign(host.calls.begin() + static_cast<std::ptrdiff_t>(before), host.calls.end());
  };
  RunEraseOnly(host);
  EXPECT_THAT(within, ElementsAre("show bar"));
  EXPECT_THAT(host.log, ElementsAre("Erasing Internet Location Bar History...", "", kErased));
}

TEST(EraseOnly, RefusesAnEmptySelection) {
  FakeEraseRunHost host;
  host.stop = true;
  RunEraseOnly(host);
  EXPECT_THAT(host.Actions(), ElementsAre("show bar", "information: No item(s) has been selected"));
  EXPECT_TRUE(host.stop);
  EXPECT_EQ(host.max, 100);
}

TEST(EraseOnly, ClosesTheBrowsersFirstWhenTheFlagIsSetAlsoForAnEmptySelection) {
  FakeEraseRunHost host;
  host.closeBrowsersFlag = true;
  RunEraseOnly(host);
  EXPECT_THAT(host.calls, ElementsAre("? close browsers flag", "close browser frames", "close window: Internet Explorer",
                                      "show bar", "? selected boxes", "information: No item(s) has been selected"));
}

TEST(EraseOnly, GoesByTheFlagAndNotByTheBox) {
  FakeEraseRunHost host;
  host.closeBrowsersBox = true;
  host.Tick(kIe, 0);
  RunEraseOnly(host);
  EXPECT_EQ(host.CountOf("close browser frames"), 0u);
}

TEST(EraseOnly, ClearsTheStopRequestBeforeTheRunAndSetsItAfterwards) {
  FakeEraseRunHost host;
  host.stop = true;
  host.Tick(kIe, 0);
  RunEraseOnly(host);
  EXPECT_EQ(host.CountOf("clean chkIEsettings 0"), 1u);
  EXPECT_EQ(host.log.back(), kErased);
  EXPECT_TRUE(host.stop);
  EXPECT_FALSE(host.stopButton);
}

TEST(EraseAndReboot, ShowsTheBarBeforeItLooksForARunInProgress) {
  FakeEraseRunHost host;
  host.TickAll();
  const RunScope another;
  RunEraseAndReboot(host);
  EXPECT_THAT(host.calls, ElementsAre("show bar"));
}

TEST(EraseAndReboot, RefusesAnEmptySelectionAndDoesNotReboot) {
  FakeEraseRunHost host;
  host.closeBrowsersFlag = true;
  host.rebootAfter = true;
  RunEraseAndReboot(host);
  EXPECT_THAT(host.calls, ElementsAre("show bar", "? selected boxes", "information: No Item Has Been Selected"));
}

TEST(EraseAndReboot, RebootsOnceTheRunIsOverAndLeavesTheBrowsersAlone) {
  FakeEraseRunHost host;
  host.closeBrowsersFlag = true;
  host.TickAll();
  RunEraseAndReboot(host);
  Lines expected = {"show bar", kFullRange, "stop button on", "stop request cleared"};
  Append(expected, RunOver(kItemsThatRun.size(), kFullBar, kErased));
  Append(expected, {"stop button off", "stop request set", "reboot"});
  EXPECT_THAT(host.Actions(), ElementsAreArray(expected));
  EXPECT_EQ(host.CountOf("? close browsers flag"), 0u);
}

TEST(EraseAndReboot, RebootsAlsoAfterAStoppedRun) {
  FakeEraseRunHost host;
  host.TickAll();
  host.onCall = StopAt(host, "pause");
  RunEraseAndReboot(host);
  EXPECT_EQ(host.log.back(), kStopped);
  EXPECT_EQ(host.calls.back(), "reboot");
}

TEST(EraseAndReboot, AsksForTheRebootTwiceWhenTheRunRebootsAsWell) {
  FakeEraseRunHost host;
  host.rebootAfter = true;
  host.Tick(kIe, 0);
  RunEraseAndReboot(host);
  const Lines actions = host.Actions();
  ASSERT_GE(actions.size(), 5u);
  EXPECT_THAT(Lines(actions.end() - 5, actions.end()),
              ElementsAre("status: Ready", "reboot", "stop button off", "stop request set", "reboot"));
}

TEST(Stop, WithinAnItemsPauseSkipsEveryItemAfterIt) {
  for (std::size_t items = 1; items <= kItemsThatRun.size(); ++items) {
    FakeEraseRunHost host;
    host.TickAll();
    host.onCall = StopAt(host, "pause", items);
    RunEraseOnly(host);
    Lines expected = {"show bar", kFullRange, "stop button on", "stop request cleared"};
    Append(expected, RunOver(items, kFullBar, kStopped));
    Append(expected, {"stop button off", "stop request set"});
    EXPECT_THAT(host.Actions(), ElementsAreArray(expected)) << "stopped in pause " << items;
  }
}

TEST(Stop, WithinACleanerLetsTheItemEndWithItsPause) {
  FakeEraseRunHost host;
  host.Tick(kNet, 3);
  host.Tick(kOpera, 0);
  host.onCall = StopAt(host, "clean chkNetsettings 3");
  RunEraseOnly(host);
  EXPECT_THAT(host.log, ElementsAre("Erasing Netscape Cache...", "Erasing Netscape Cookies...", "", kStopped));
  EXPECT_EQ(host.CountOf("pause"), 1u);
  EXPECT_EQ(host.value, host.max);
}

TEST(Stop, WithinTheScheduledShredSkipsEveryItem) {
  FakeEraseRunHost host;
  host.TickAll();
  host.scheduledShred = true;
  host.onCall = StopAt(host, "shred scheduled files");
  RunEraseOnly(host);
  EXPECT_THAT(host.log, ElementsAre("", kStopped));
  EXPECT_EQ(host.value, kFullBar);
}

TEST(DoClean, AtTheSessionsEndSkipsEveryItemWhenTheStopRequestIsStillSet) {
  FakeEraseRunHost host;
  host.TickAll();
  host.stop = true;
  host.scheduledShred = true;
  doClean(host);
  EXPECT_THAT(host.Actions(), ElementsAre("clear log", "status: Please Wait ..", "shred scheduled files",
                                          "log: ", std::string("log: ") + kStopped, "bar value 100", "status: Ready"));
  EXPECT_TRUE(host.stop);
}

TEST(DoClean, AtTheSessionsEndRunsEveryItemWhenNothingRanBefore) {
  FakeEraseRunHost host;
  host.TickAll();
  host.max = kFullBar;
  doClean(host);
  EXPECT_THAT(host.Actions(), ElementsAreArray(RunOver(kItemsThatRun.size(), kFullBar, kErased)));
  EXPECT_FALSE(host.stop) << "the run itself leaves the request as it is";
}

TEST(DoClean, AddsTenToWhereTheBarStands) {
  FakeEraseRunHost host;
  host.value = 33;
  host.Tick(kIe, 0);
  host.Tick(kIe, 1);
  doClean(host);
  EXPECT_EQ(host.CountOf("bar value 43"), 1u);
  EXPECT_EQ(host.CountOf("bar value 53"), 1u);
  EXPECT_EQ(host.value, 100);
}

TEST(DoClean, ClosesTheBrowsersOnlyForTheScheduleWithItsBoxTicked) {
  for (const bool schedule : {false, true}) {
    for (const bool box : {false, true}) {
      FakeEraseRunHost host;
      host.closeBrowsersFlag = true;
      host.scheduleEnabled = schedule;
      host.closeBrowsersBox = box;
      host.scheduledShred = true;
      doClean(host);
      Lines expected = {"clear log", "status: Please Wait .."};
      if (schedule && box)
        Append(expected, {"close browser frames", "close window: Microsoft Internet Explorer", "close window: Netscape",
                          "minimise all windows"});
      Append(expected, {"shred scheduled files", "log: ", std::string("log: ") + kErased, "bar value 100", "status: Ready"});
      EXPECT_THAT(host.Actions(), ElementsAreArray(expected)) << "schedule " << schedule << ", box " << box;
    }
  }
}

TEST(DoClean, ShredsTheScheduledFilesBeforeTheFirstItemAndOnlyWhenAskedTo) {
  FakeEraseRunHost host;
  host.Tick(kIe, 0);
  doClean(host);
  EXPECT_EQ(host.CountOf("shred scheduled files"), 0u);
  host.calls.clear();
  host.scheduledShred = true;
  doClean(host);
  EXPECT_EQ(host.Actions()[2], "shred scheduled files");
  EXPECT_EQ(host.CountOf("shred scheduled files"), 1u);
}

TEST(DoClean, RebootsLastWhenTheBoxIsTickedAlsoAfterAStop) {
  for (const bool stopped : {false, true}) {
    FakeEraseRunHost host;
    host.Tick(kIe, 0);
    host.rebootAfter = true;
    host.stop = stopped;
    doClean(host);
    EXPECT_EQ(host.calls.back(), "reboot") << "stopped " << stopped;
    EXPECT_EQ(host.CountOf("reboot"), 1u);
    EXPECT_EQ(host.status, "Ready");
  }
}

TEST(DoClean, RunsAnItemWhenTheNumberInItsFlagIsOne) {
  for (const char* flag : {"1", " 1 ", "1.0", "+1", "01", "1e0"}) {
    FakeEraseRunHost host;
    host.flags[{kIe, 0}] = flag;
    doClean(host);
    EXPECT_EQ(host.CountOf("clean chkIEsettings 0"), 1u) << "flag [" << flag << "]";
  }
}

TEST(DoClean, PassesOverAnItemWithAnyOtherFlagAndGoesOn) {
  for (const char* flag :
       {"", " ", "0", "2", "-1", "10", "0.9999999", "True", "abc", "1x", "x1", "1 1", "1\t", "1e400", "-1e400"}) {
    FakeEraseRunHost host;
    host.flags[{kIe, 0}] = flag;
    host.flags[{kOpera, 2}] = "1";
    doClean(host);
    EXPECT_EQ(host.CountOf("clean chkIEsettings 0"), 0u) << "flag [" << flag << "]";
    EXPECT_THAT(host.log, ElementsAre("Erasing Opera Typed URLs....", "", kErased)) << "flag [" << flag << "]";
  }
}

TEST(TheRunAtTheSessionsEnd, IsJoinedByNoOtherOne) {
  FakeEraseRunHost host;
  host.Tick(kIe, 0);
  Lines within;
  host.onCall = [&](const std::string& call) {
    EXPECT_TRUE(RunInProgress) << call;
    if (call != "pause") return;
    const std::size_t before = host.calls.size();
    RunEraseOnly(host);
    RunEraseAndReboot(host);
    within.assign(host.calls.begin() + static_cast<std::ptrdiff_t>(before), host.calls.end());
  };
  RunAtSessionEnd(host);
  EXPECT_THAT(within, ElementsAre("show bar"));
  EXPECT_THAT(host.log, ElementsAre("Erasing Internet Location Bar History...", "", kErased));
  EXPECT_FALSE(RunInProgress);
}

TEST(TheRunAtTheSessionsEnd, WithinAnotherOneLeavesThatOneInProgress) {
  FakeEraseRunHost host;
  const RunScope another;
  RunAtSessionEnd(host);
  EXPECT_TRUE(RunInProgress);
}
