// The panel "Shredder": the manual lists of files and folders, and the scheduled list.
#pragma once

#include <optional>
#include <string>

#include "platform/asked_log.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/main_window.h"
#include "platform/panel.h"
#include "platform/runtime_error.h"
#include "platform/tally.h"
#include "settings/bound_controls.h"
#include "settings/schema.h"
#include "shred/fraShred_ids.h"
#include "shred/frmAddDir.h"
#include "shred/shred_list.h"

namespace shred {
using namespace platform;

class fraShred final : public Panel {
 public:
  explicit fraShred(MainWindow& window);
  // The scheduled list from and to its file "QUELLIX_Shred" in the program's folder. Loading fills the list box alone: a
  // scheduled run goes by the collection and finds nothing until files are added: what a session
  // has not chosen itself is not shredded. Saving raises when the file cannot be written, and the panel says so.
  void LoadFiles();
  void SaveSettingsToFile();

  // Shreds the files of the scheduled collection; the first step of an erase run. A stop request that comes meanwhile ends
  // it after the file in hand. What is gone leaves the list and its file, also when the program ends in mid-run; what is
  // left, or out of reach, stays in both.
  void ShredDelete();

  // Whether an erase run begins with the scheduled list, and whether there is one to be saved: an empty one only while its
  // file still has the names of shredded files.
  bool IsScheduleOn() const { return chkOptions.Value() == 1; }
  bool HasListToSave() const { return lstFiles.ListCount() > 0 || fileHasMore_; }

  // What is kept of the last run is overwritten.
  void ForgetRuns() { asked_.Forget(); }

  // Panel
  void LoadEraseSettings() override;
  void KeepSettings() override;

 private:
  friend struct PanelForTests;  // which fills the controls as their user would

  void OnInit() override { asked_.Attach(txtMessage.Handle()); }
  void OnClick(int id) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Press(int id);

  // While one exists, a list is walked and window events run; the user changes none of the lists meanwhile.
  class Walk {
   public:
    explicit Walk(fraShred& panel) : panel_(panel) { ++panel_.walks_; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() { --panel_.walks_; }

   private:
    fraShred& panel_;
  };

  // A walk that shreds: what it does is told of by the message line. One in the middle of another adds to what that one
  // tells.
  class Run : Walk {
   public:
    explicit Run(fraShred& panel);
    ~Run() { --runs_; }

   private:
    int& runs_;
    ListeningScope listening_;
  };

  bool AddFiles(ShredList& list);
  void ClearFiles(ShredList& list);
  void ClearScheduled();
  void TakeUnreadLines();
  void TellIfNotSaved(Statement save);
  std::string ShredManually();
  std::string RunShred(ShredList& list, const TextBox& level, const bool* cutShort);
  void ShowStep(int step, int count);
  void AddFolder();
  std::string ShredFolders();
  void ShredAll();
  void ShowFileCount(int count);
  void ResetStatus();
  void RemoveSelected(HWND list);
  void RemoveSelectedFiles(ShredList& list);
  void TakeDrop(WPARAM drop);
  HWND ListAt(POINT place) const;  // null for none

  MainWindow& window_;
  settings::SettingCheckBox chkOptions{*this, IDC_chkOptions, settings::Setting::chkOptions};  // of the scheduled list
  settings::SettingTextBox txtLevel{*this, IDC_txtLevel, settings::Setting::txtLevel};         // of the scheduled list
  TextBox txtLev{*this, IDC_txtLev};  // security level of the manual lists
  ListBox lstFiles{*this, IDC_lstFiles};
  SpinButton UpDown1{*this, IDC_UpDown1, txtLev};
  SpinButton UpDown2{*this, IDC_UpDown2, txtLevel};
  ListBox lstFileShred{*this, IDC_lstFileShred};
  ListBox lstFolder{*this, IDC_lstFolder};
  TextBox txtMessage{*this, IDC_txtMessage};
  Label FileCount{*this, IDC_FileCount};
  Label lStat{*this, IDC_lStat};
  ProgressBar PbarShred{*this, IDC_PbarShred};
  AskedLog asked_;

  ShredList manual_{lstFileShred};
  ShredList folders_{lstFolder};
  ShredList scheduled_{lstFiles};
  frmAddDir addDir_;
  int walks_ = 0;
  int runs_ = 0;
  bool fileHasMore_ = false;  // the list's file than the list
  bool fileUnread_ = false;   // there is a list's file, and the list knows nothing of it
};

}  // namespace shred
