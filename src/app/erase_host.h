// Answers what an erase run asks for from the panels and the rooms behind them.
#pragma once

#include "app/panels.h"

namespace app {
using namespace platform;

class EraseHost final : public erase::EraseRunHost {
 public:
  EraseHost(Panels& panels, MainWindow& window) : panels_(panels), window_(window) {}

  void ClearLog() override;
  void AddLogLine(const std::string& line) override;
  void SetStatusText(const std::string& text) override;
  int ProgressValue() override;
  int ProgressMax() override;
  void SetProgressValue(int value) override;
  void SetProgressRange(int min, int max) override;
  void ShowProgress() override;
  bool StopButtonEnabled() override;
  void EnableStopButton(bool enabled) override;
  bool ScheduleEnabled() override;
  bool CloseBrowsersChecked() override;
  bool CloseBrowsersFlag() override;
  bool ScheduledShredEnabled() override;
  bool RebootAfterErase() override;
  int SelectedItemCount() override;
  std::string ItemFlag(const erase::EraseItem& item) override;
  bool StopRequested() override;
  void SetStopRequest(bool stop) override;
  void RunCleaner(erase::Cleaner cleaner) override;
  void PauseAfterItem() override;
  void CloseBrowserFrames() override;
  bool ClosingBrowsers() override;
  void CloseWindowByTitle(const char* title) override;
  void MinimiseAllWindows() override;
  void ShredScheduledFiles() override;
  void Reboot() override;
  void ShowInformation(const char* text) override;

 private:
  Panels& panels_;
  MainWindow& window_;
  bool closingBrowsers_ = false;
};

}  // namespace app
