// The order of the start, without a window.
#pragma once

namespace app {

// The steps. Each may raise a RuntimeError; the start goes on with the next one.
class StartUpSteps {
 public:
  virtual void SaveCaption() = 0;
  virtual void ReadStoredSettings() = 0;
  virtual void LoadEraseSettings() = 0;
  virtual void LoadGeneralSettings() = 0;
  virtual void LoadBossKey() = 0;
  virtual void BringFirstPanelToFront() = 0;
  virtual void NameTheSystem() = 0;
  virtual void LoadScheduledList() = 0;
  virtual void ShowWindow() = 0;
  virtual void MakeOtherPanels() = 0;
  virtual bool ErasesAtStart() = 0;
  virtual void EraseOnly() = 0;
  virtual void AddIcon() = 0;
  virtual void ShowStartStatus() = 0;

 protected:
  ~StartUpSteps() = default;
};

void RunStartUp(StartUpSteps& steps);

}  // namespace app
