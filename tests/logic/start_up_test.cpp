#include "app/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/runtime_error.h"

using namespace app;
using namespace platform;

namespace {

class RecordedSteps final : public StartUpSteps {
 public:
  std::vector<std::string> steps;
  bool erases = false;
  std::string failing;

  void SaveCaption() override { Note("save caption"); }
  void ReadStoredSettings() override { Note("read settings"); }
  void LoadEraseSettings() override { Note("load erase settings"); }
  void LoadGeneralSettings() override { Note("load general settings"); }
  void LoadBossKey() override { Note("load boss key"); }
  void BringFirstPanelToFront() override { Note("first panel"); }
  void NameTheSystem() override { Note("name the system"); }
  void LoadScheduledList() override { Note("load list"); }
  void ShowWindow() override { Note("show window"); }
  void MakeOtherPanels() override { Note("other panels"); }
  bool ErasesAtStart() override { return erases; }
  void EraseOnly() override { Note("erase"); }
  void AddIcon() override { Note("add icon"); }
  void ShowStartStatus() override { Note("status"); }

 private:
  void Note(const std::string& step) {
    steps.push_back(step);
    if (step == failing) Raise(kPermissionDenied);
  }
};

const std::vector<std::string> kWithErase = {
    "save caption",    "read settings", "load erase settings", "load general settings", "load boss key", "first panel",
    "name the system", "load list",     "show window",         "other panels",          "erase",         "add icon",
    "status"};

}  // namespace

TEST(StartUp, TakesItsStepsInTheirOrder) {
  RecordedSteps steps;
  steps.erases = true;
  RunStartUp(steps);
  EXPECT_EQ(steps.steps, kWithErase);
}

TEST(StartUp, ErasesOnlyWhenThatIsChosen) {
  RecordedSteps steps;
  RunStartUp(steps);
  EXPECT_THAT(steps.steps, testing::Not(testing::Contains("erase")));
  EXPECT_EQ(steps.steps.size(), kWithErase.size() - 1);
}

TEST(StartUp, GoesOnAfterAStepThatFails) {
  for (const std::string& failing : kWithErase) {
    RecordedSteps steps;
    steps.erases = true;
    steps.failing = failing;
    RunStartUp(steps);
    EXPECT_EQ(steps.steps, kWithErase) << "failing: " << failing;
  }
  Err.Clear();
}
