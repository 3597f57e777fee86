// What a failing statement does to an erase run: within doClean the next statement follows, within a button's handler the
// handler is left.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "erase/erase_run.h"
#include "fake_erase_run_host.h"

using namespace erase;
using namespace platform;

namespace {

using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

// A run that has something to do at every statement.
void GiveEverythingToDo(FakeEraseRunHost& host) {
  host.TickAll();
  host.max = 1000;
  host.scheduleEnabled = host.closeBrowsersBox = host.closeBrowsersFlag = true;
  host.scheduledShred = host.rebootAfter = true;
}

enum class Failure { RunTimeError, OutOfMemory };

void FailAt(FakeEraseRunHost& host, std::size_t call, Failure failure = Failure::RunTimeError) {
  host.onCall = [&host, call, failure](const std::string&) {
    if (host.calls.size() != call + 1) return;
    if (failure == Failure::OutOfMemory) throw std::bad_alloc();
    Raise(kPermissionDenied);
  };
}

template <class Run>
Lines CallsOf(Run run) {
  FakeEraseRunHost host;
  GiveEverythingToDo(host);
  run(host);
  return host.calls;
}

// Where the bar is depends on every step before; the calls that move it are counted apart.
Lines WithoutBarValues(const Lines& actions) {
  Lines rest;
  for (const std::string& action : actions)
    if (action.rfind("bar value", 0) != 0) rest.push_back(action);
  return rest;
}

// Fails each call outside of the run itself in turn: nothing follows it.
template <class Run>
void ExpectHandlerLeftAtAnyFailure(Run run, bool empty) {
  const auto prepare = [empty](FakeEraseRunHost& host) {
    GiveEverythingToDo(host);
    if (empty) host.selectedBoxes = 0;
  };
  FakeEraseRunHost whole;
  prepare(whole);
  run(whole);
  bool withinRun = false;
  for (std::size_t i = 0; i < whole.calls.size(); ++i) {
    if (whole.calls[i] == "clear log") withinRun = true;
    if (whole.calls[i] == "stop button off") withinRun = false;
    if (withinRun) continue;
    FakeEraseRunHost host;
    prepare(host);
    FailAt(host, i);
    EXPECT_NO_THROW(run(host)) << "failing call " << i << ": " << whole.calls[i];
    EXPECT_THAT(host.calls, ElementsAreArray(whole.calls.begin(), whole.calls.begin() + static_cast<std::ptrdiff_t>(i) + 1));
  }
}

class EraseRunFailures : public testing::Test {
 protected:
  EraseRunFailures() { Err.Clear(); }
  ~EraseRunFailures() override { Err.Clear(); }
};

}  // namespace

TEST_F(EraseRunFailures, AnActionThatFailsIsFollowedByEveryOtherAction) {
  const Lines calls = CallsOf(doClean);
  FakeEraseRunHost whole;
  GiveEverythingToDo(whole);
  doClean(whole);
  const Lines expected = whole.Actions();
  ASSERT_GT(expected.size(), kItemsThatRun.size());
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i][0] == '?') continue;
    for (const Failure failure : {Failure::RunTimeError, Failure::OutOfMemory}) {
      FakeEraseRunHost host;
      GiveEverythingToDo(host);
      FailAt(host, i, failure);
      EXPECT_NO_THROW(doClean(host)) << "failing call " << i << ": " << calls[i];
      EXPECT_THAT(WithoutBarValues(host.Actions()), ElementsAreArray(WithoutBarValues(expected)))
          << "failing call " << i << ": " << calls[i];
      EXPECT_EQ(host.Actions().size(), expected.size()) << "failing call " << i << ": " << calls[i];
    }
  }
}

TEST_F(EraseRunFailures, AQuestionThatFailsCostsItsOwnStatementAndNoMore) {
  const Lines calls = CallsOf(doClean);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i][0] != '?' || calls[i] == "? stop request") continue;
    FakeEraseRunHost host;
    GiveEverythingToDo(host);
    FailAt(host, i);
    EXPECT_NO_THROW(doClean(host)) << "failing call " << i << ": " << calls[i];
    EXPECT_EQ(host.status, "Ready") << "failing call " << i << ": " << calls[i];
    EXPECT_EQ(host.log.back(), "Quellix has successfully erased selected item(s).")
        << "failing call " << i << ": " << calls[i];
    const std::size_t items = kItemsThatRun.size() - (calls[i].rfind("? flag", 0) == 0 ? 1 : 0);
    EXPECT_EQ(host.CountOf("pause"), items) << "failing call " << i << ": " << calls[i];
    EXPECT_EQ(host.CountOf("reboot"), calls[i] == "? reboot after" ? 0u : 1u) << "failing call " << i << ": " << calls[i];
  }
}

// The host promises of every call that it may raise, and of the run that it goes on.
TEST_F(EraseRunFailures, AStopRequestThatCannotBeReadDoesNotEndTheRun) {
  const Lines calls = CallsOf(doClean);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i] != "? stop request") continue;
    FakeEraseRunHost host;
    GiveEverythingToDo(host);
    FailAt(host, i);
    ASSERT_NO_THROW(doClean(host)) << "failing call " << i;
    EXPECT_EQ(host.status, "Ready") << "failing call " << i;
    EXPECT_EQ(host.CountOf("reboot"), 1u) << "failing call " << i;
  }
}

TEST_F(EraseRunFailures, AlsoARunWhoseEveryActionFailsComesToItsEnd) {
  FakeEraseRunHost host;
  GiveEverythingToDo(host);
  host.onCall = [](const std::string& call) {
    if (call[0] != '?') Raise(kPermissionDenied);
  };
  EXPECT_NO_THROW(doClean(host));
  EXPECT_EQ(host.CountOf("pause"), kItemsThatRun.size());
  EXPECT_EQ(host.CountOf("status: Ready"), 1u);
  EXPECT_EQ(host.calls.back(), "reboot");
}

TEST_F(EraseRunFailures, TheErrorOfACleanerStaysPending) {
  FakeEraseRunHost host;
  host.Tick(kWin, 0);
  host.onCall = [](const std::string& call) {
    if (call == "clean chkWinsettings 0") Raise(kPermissionDenied);
  };
  doClean(host);
  EXPECT_EQ(Err.Number(), 70);
}

TEST_F(EraseRunFailures, ABarThatIsTooShortDoesNotStopTheItems) {
  FakeEraseRunHost host;
  host.TickAll();
  doClean(host);  // nobody set a range for all the items; the bar ends at 100
  EXPECT_EQ(host.CountOf("pause"), kItemsThatRun.size());
  EXPECT_EQ(host.CountOf("bar value 110"), kItemsThatRun.size() - 10);
  EXPECT_EQ(host.value, 100);
  EXPECT_EQ(host.log.back(), "Quellix has successfully erased selected item(s).");
}

TEST_F(EraseRunFailures, LeaveTheHandlerOfEraseOnly) {
  ExpectHandlerLeftAtAnyFailure(RunEraseOnly, false);
  ExpectHandlerLeftAtAnyFailure(RunEraseOnly, true);
}

TEST_F(EraseRunFailures, LeaveTheHandlerOfEraseAndRebootWithoutAReboot) {
  ExpectHandlerLeftAtAnyFailure(RunEraseAndReboot, false);
  ExpectHandlerLeftAtAnyFailure(RunEraseAndReboot, true);
}

TEST_F(EraseRunFailures, OfItemsLeaveTheButtonsAsAfterAnyRun) {
  for (const auto run : {RunEraseOnly, RunEraseAndReboot}) {
    FakeEraseRunHost host;
    GiveEverythingToDo(host);
    host.onCall = [](const std::string& call) {
      if (call.rfind("clean ", 0) == 0 || call == "pause") Raise(kDiskFull);
    };
    run(host);
    EXPECT_FALSE(host.stopButton);
    EXPECT_TRUE(host.stop);
    EXPECT_EQ(host.value, host.max);
  }
}

// The cookies' item runs the cleaner of the cache a second time.
TEST(ARun, TellsEachFailureOnceForAllOfItsCleanersAndTheScheduledShred) {
  FakeEraseRunHost host;
  host.TickAll();
  host.scheduledShred = true;
  int statements = 0;
  host.onCall = [&](const std::string& call) {
    if (call.starts_with("clean ") || call == "shred scheduled files") {
      ++statements;
      EXPECT_EQ(host.toldTogether, 1) << call;
    }
  };
  doClean(host);
  RunEraseOnly(host);
  EXPECT_GT(statements, 40);
  EXPECT_EQ(host.toldTogether, 0);
}
