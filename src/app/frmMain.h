// The main window: it creates the panels, owns the window's events and the notification icon, and gives the panels what
// they need of it.
#pragma once

#include "app/erase_host.h"
#include "app/frmMain_ids.h"
#include "app/mdSysTray.h"
#include "app/panels.h"
#include "automation/frmWarning.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/internet_transfer.h"
#include "platform/main_window.h"

namespace app {
using namespace platform;

class frmMain final : public Dialog, public MainWindow {
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
  void EraseOnly() override;
  void ShowErasePanel() override { Navigate(Panel::Erase); }
  void RunInvisibly() override;
  void HideByBossKey() override;
  void ShowBossKey(const std::string& name) override { panels_.main.Label1.SetText(name); }
  std::string PanelCaption() const override;

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;
  bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

  void PlacePanel(HWND panel, HWND after);
  void CreateOtherPanels();
  HWND PanelWindow(Panel panel) const;
  Control& NavigationButton(Panel panel);
  void BringToFront(Panel panel);
  void Navigate(Panel panel);

  void RunStartUp();
  void LoadEraseSettings();
  void LoadGeneralSettings();
  void SaveEraseSettings();
  void SaveAllSettings();

  bool ForwardCommand(WPARAM wParam, LPARAM lParam);
  void OnTrayCallback(WPARAM wParam, LPARAM lParam);
  void RestoreFromIcon();
  void ShowAndActivateFromMenu();
  void ShowPopupMenu();
  void AskToExit();
  void OnTimer(WPARAM timer);
  void TickScheduler();
  void PollKeys();
  void Vanish();
  void RestoreByBossKey();
  void ComeBack();
  void CloseQuery(bool sessionEnds);
  [[noreturn]] void Unload();

  EraseHost host_;
  Panels panels_;
  Panel shown_ = Panel::MainSettings;
  Button cmdDefault{*this, IDC_cmdDefault};
  Button cmdCleenFrame{*this, IDC_cmdCleenFrame};
  Button cmdSecureDelk{*this, IDC_cmdSecureDelk};
  Button cmdSchedule{*this, IDC_cmdSchedule};
  Button cmdHelp{*this, IDC_cmdHelp};
  StatusBar stBar{*this, IDC_stBar};
  InternetTransfer Inet1;
  InternetTransfer Inet2;
  NotificationIcon icon_;
  automation::frmWarning warning_;
  UniqueGdiObject banner_;
  UniqueGdiObject bannerColour_;
  UINT taskbarCreated_ = 0;
  HACCEL keys_ = nullptr;
};

}  // namespace app
