#include "app/session_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/runtime_error.h"

using namespace app;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kLogOff = 0x80000000, kShutDown = 0, kInstaller = 1;

class RecordedSteps final : public SessionEndSteps {
 public:
  std::vector<std::string> steps;
  bool erases = true;
  bool running = false;
  bool stop = false;
  std::function<void()> withinErase;

  bool ErasesAtSessionEnd() override { return erases; }
  void TellSystemOfWork(bool atWork) override {
    steps.emplace_back(atWork ? "at work" : "work done");
    Raise(kDllFunctionNotFound);  // as on a system that knows no such thing
  }
  void EraseBeforeSessionEnd() override {
    steps.emplace_back(stop ? "erase, stopped" : "erase");
    if (withinErase) withinErase();
  }
  bool IsRunInProgress() override { return running; }
  bool StopRequested() override { return stop; }
  void SetStopRequest(bool newStop) override { stop = newStop; }
  void UnloadAtSessionEnd() override { steps.emplace_back("unload"); }
};

class TheSessionsEnd : public testing::Test {
 protected:
  ~TheSessionsEnd() override { Err.Clear(); }
  RecordedSteps steps;
  SessionEnd end{steps};
};

}  // namespace

TEST_F(TheSessionsEnd, ErasesBeforeItIsAnsweredAndTellsTheSystemSo) {
  for (const std::uint32_t reason : {kLogOff, kShutDown}) {
    steps.steps.clear();
    steps.stop = false;
    end.Ask(reason);
    EXPECT_THAT(steps.steps, ElementsAre("at work", "erase", "work done")) << reason;
    EXPECT_TRUE(steps.stop);
  }
}

TEST_F(TheSessionsEnd, ErasesNothingWhenThatIsNotWished) {
  steps.erases = false;
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, IsEmpty());
  EXPECT_TRUE(steps.stop) << "a run in progress is to end";
}

TEST_F(TheSessionsEnd, ErasesNothingForAnInstallerThatClosesPrograms) {
  end.Ask(kInstaller);
  EXPECT_THAT(steps.steps, IsEmpty());
  end.Decide(true);
  EXPECT_THAT(steps.steps, ElementsAre("unload"));
}

TEST_F(TheSessionsEnd, LeavesTheStopRequestOfAnEarlierRunForItsErase) {
  steps.stop = true;
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, ElementsAre("at work", "erase, stopped", "work done"));
}

TEST_F(TheSessionsEnd, IsOneRunThatASecondQuestionDoesNotJoin) {
  steps.withinErase = [this] {
    end.Ask(kShutDown);
    end.Ask(kInstaller);
    EXPECT_FALSE(steps.stop) << "the run goes on";
  };
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, ElementsAre("at work", "erase", "work done"));
}

TEST_F(TheSessionsEnd, WaitsForItsRun) {
  steps.withinErase = [this] { end.Decide(true); };
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, ElementsAre("at work", "erase", "work done", "unload"));
}

TEST_F(TheSessionsEnd, DoesNotComeWhenItIsCalledOffDuringItsRun) {
  steps.withinErase = [this] {
    end.Decide(true);
    end.Decide(false);
  };
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, ElementsAre("at work", "erase", "work done"));
}

TEST_F(TheSessionsEnd, CalledOffWithoutAnEraseLeavesTheNextOneItsErase) {
  steps.erases = false;
  end.Ask(kShutDown);
  end.Decide(false);
  EXPECT_FALSE(steps.stop);
  steps.erases = true;
  end.Ask(kShutDown);
  EXPECT_THAT(steps.steps, ElementsAre("at work", "erase", "work done"));
}

TEST_F(TheSessionsEnd, CalledOffKeepsTheStopRequestOfARunBeforeIt) {
  steps.erases = false;
  steps.stop = true;
  end.Ask(kShutDown);
  end.Decide(false);
  EXPECT_TRUE(steps.stop);
}

TEST_F(TheSessionsEnd, CalledOffAfterItsEraseLeavesTheStopRequestAsAfterAnyRun) {
  end.Ask(kShutDown);
  end.Decide(false);
  EXPECT_TRUE(steps.stop);
}

TEST_F(TheSessionsEnd, CalledOffDoesNotTakeTheStopRequestFromARunInProgress) {
  steps.erases = false;
  steps.running = true;
  end.Ask(kShutDown);
  end.Decide(false);
  EXPECT_TRUE(steps.stop);
}
