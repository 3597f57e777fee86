// Answers what an erase run asks for from the panels and the rooms below them.
#pragma once

#include <span>
#include <string>

#include "app/fraMain.h"
#include "automation/fraScheduleManager.h"
#include "erase/erase_item.h"
#include "erase/erase_run.h"
#include "erase/fraClean.h"
#include "platform/main_window.h"
#include "shred/fraShred.h"

namespace app {

class EraseHost final : public erase::EraseRunHost {
 public:
  struct Panels {
    fraMain& main;
    erase::fraClean& clean;
    shred::fraShred& shred;
    automation::fraScheduleManager& scheduleManager;
  };

  EraseHost(platform::MainWindow& window, const Panels& panels) : window_(window), panels_(panels) {}

  erase::RunView& View() override { return panels_.clean; }
  void SetStatusText(const std::string& text) override { window_.SetStatusText(text); }
  bool ScheduleEnabled() override { return panels_.scheduleManager.IsScheduleOn(); }
  bool CloseBrowsersChecked() override { return panels_.scheduleManager.ClosesBrowsers(); }
  bool CloseBrowsersFlag() override;
  bool ScheduledShredEnabled() override { return panels_.shred.IsScheduleOn(); }
  bool RebootAfterErase() override { return panels_.scheduleManager.RebootsAfterErase(); }
  std::span<const erase::EraseItem> Items() override;
  int SelectedItemCount() override { return panels_.main.SelectedItemCount(); }
  std::string ItemFlag(const erase::EraseItem& item) override;
  bool StopRequested() override;
  void SetStopRequest(bool stop) override;
  void TellEachFailureOnce(platform::Statement run) override;
  void RunCleaner(erase::Cleaner cleaner) override;
  void PauseAfterItem() override;
  void CloseBrowserFrames() override;
  void CloseWindowByTitle(const char* title) override;
  void MinimiseAllWindows() override;
  void ShredScheduledFiles() override { panels_.shred.ShredDelete(); }

  // A forced reboot tells nobody, so what was chosen is stored before it. Nobody may be there to close a message.
  void Reboot() override;
  void ShowInformation(const char* text) override;

 private:
  platform::MainWindow& window_;
  Panels panels_;
};

}  // namespace app
