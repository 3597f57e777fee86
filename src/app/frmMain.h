// The main window: a composition of the panels, the notification icon, the scheduler, the stealth keys and the start. It
// lists the panels and passes on what happens to the one that it concerns.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "app/erase_host.h"
#include "app/fraHelp.h"
#include "app/fraMain.h"
#include "app/frmMain_ids.h"
#include "app/mdSysTray.h"
#include "app/quellix_ids.h"
#include "app/session_end.h"
#include "app/start_up.h"
#include "automation/fraScheduleManager.h"
#include "automation/scheduler.h"
#include "automation/stealth.h"
#include "erase/erase_run.h"
#include "erase/fraClean.h"
#include "platform/clsIni.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/internet_transfer.h"
#include "platform/main_window.h"
#include "platform/panel.h"
#include "shred/fraShred.h"

namespace app {
using namespace platform;

class frmMain final : public Dialog, public MainWindow, private StartUpSteps, private SessionEndSteps {
 public:
  frmMain();
  ~frmMain();

  // Creates the window, owned by `owner`, and runs the start-up sequence. False when the system refuses the window.
  bool Load(HWND owner);

  // Keys that choose a panel and move the focus; true when the message was one of them.
  bool TranslateKey(MSG& message);

  // MainWindow
  HWND Window() const override { return Handle(); }
  void SetStatusText(const std::string& text) override { stBar.SetPanel2(text); }
  void EraseOnly() override { erase::RunEraseOnly(host_); }
  void ShowErasePanel() override { Click(IDC_cmdCleenFrame); }
  void RunInvisibly() override { stealth_.RunInvisibly(); }
  void HideByBossKey() override { stealth_.HideByBossKey(); }
  void ShowBossKey(const std::string& name) override { main_.ShowBossKey(name); }
  void SaveAllSettings() override;
  std::string PanelCaption() const override { return rows_[shown_].panel.Caption(); }
  void ForgetRuns() override;
  void ShowIcon(bool shown) override;

 private:
  // A panel with its button. The status bar names it by the button's caption, or as the row has it.
  struct Row {
    MarkedButton& button;
    Panel& panel;
    const char* statusName = nullptr;
  };

  // Dialog
  void OnInit() override;
  void OnClick(int id) override;
  void OnCancel() override {}  // Esc closes nothing
  void OnClose() override;
  void OnTimer(UINT_PTR timer) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  // StartUpSteps
  void SaveCaption() override;
  void ReadStoredSettings() override;
  void LoadEraseSettings() override;
  void LoadGeneralSettings() override;
  void LoadBossKey() override { scheduleManager_.getBossKeySetting(); }
  void BringFirstPanelToFront() override { BringToFront(0); }
  void NameTheSystem() override;
  void LoadScheduledList() override { shred_.LoadFiles(); }
  void ShowWindow() override;
  void MakeOtherPanels() override;
  bool ErasesAtStart() override;
  void AddIcon() override;
  void ShowStartStatus() override { SetStatusText(StatusOf(rows_.front())); }

  // SessionEndSteps
  bool ErasesAtSessionEnd() override;
  void TellSystemOfWork(bool atWork) override;
  void EraseBeforeSessionEnd() override;
  bool IsRunInProgress() override;
  bool StopRequested() override;
  void SetStopRequest(bool stop) override;
  void UnloadAtSessionEnd() override;

  static std::string StatusOf(const Row& row);
  void PlacePanel(HWND panel, HWND after);
  void BringToFront(std::size_t panel);
  void LookAfterKeyboard();
  void Navigate(std::size_t panel);
  void GoToNeighbour(int steps);

  void SaveEraseSettings();

  bool ForwardCommand(WPARAM wParam, LPARAM lParam);
  void OnTrayCallback(WPARAM wParam, LPARAM lParam);
  void ShowIconMenu();
  void AskToExit();
  [[noreturn]] void Unload();

  EraseHost host_;
  fraMain main_;
  erase::fraClean clean_;
  shred::fraShred shred_;
  automation::fraScheduleManager scheduleManager_;
  fraHelp help_;
  automation::Scheduler scheduler_;
  automation::Stealth stealth_;
  NotificationIcon icon_;
  SessionEnd sessionEnd_{*this};

  MarkedButton cmdDefault{*this, IDC_cmdDefault};
  MarkedButton cmdCleenFrame{*this, IDC_cmdCleenFrame};
  MarkedButton cmdSecureDelk{*this, IDC_cmdSecureDelk};
  MarkedButton cmdSchedule{*this, IDC_cmdSchedule};
  MarkedButton cmdHelp{*this, IDC_cmdHelp};
  // In the order of the buttons and of the keys Ctrl+1 and following. The last status has its word twice: the status is a
  // required text.
  std::array<Row, 5> rows_{{{cmdDefault, main_},
                            {cmdCleenFrame, clean_},
                            {cmdSecureDelk, shred_},
                            {cmdSchedule, scheduleManager_},
                            {cmdHelp, help_, "Displaying Help"}}};
  std::size_t shown_ = 0;

  StatusBar stBar{*this, IDC_stBar};
  Picture Image1{*this, IDC_Image1, IDB_banner, 0};
  InternetTransfer Inet1;
  InternetTransfer Inet2;
  UniqueGdiObject bannerColour_;
  HACCEL keys_ = nullptr;
};

}  // namespace app
