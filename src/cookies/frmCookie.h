// The window "Cookies Manager": the browser's current cookies on the left, those to keep on the right.
//
// The lists' names are the reverse of what they hold: lstKeeplist has the current cookies, SafeList the keep list.
#pragma once

#include <optional>

#include "cookies/frmCookie_ids.h"
#include "cookies/keep_list.h"
#include "platform/clsIni.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/main_window.h"
#include "platform/wide_text.h"

namespace cookies {
using namespace platform;

class frmCookie final : public Dialog {
 public:
  explicit frmCookie(MainWindow& window) : window_(window) {}

  // Opens the window and fills it, or brings the open one to the front. The main window stays usable beside it.
  void Show();

 private:
  class Work;
  void OnInit() override;
  void OnClick(int id) override;
  void OnNotification(int id, int notification) override;
  void OnCancel() override { Unload(); }

  void EnableButtons(bool enabled);
  void Load();
  void ShowCurrentCookies(const Work& work);
  void TakeKeptAway(const CookieNames& kept, const Work& work);
  static void MoveSelected(ListBox& from, ListBox& to);
  void MoveAll(ListBox& from, ListBox& to);
  void SaveAndClose();
  void Unload();

  MainWindow& window_;
  ListBox lstKeeplist{*this, IDC_lstKeeplist};
  ListBox SafeList{*this, IDC_SafeList};
  Button cmdAdd{*this, IDC_cmdAdd};
  Button cmdAddAll{*this, IDC_cmdAddAll};
  Button cmdRemove{*this, IDC_cmdRemove};
  Button cmdRemoveAll{*this, IDC_cmdRemoveAll};
  Button cmdRefresh{*this, IDC_cmdRefresh};
  Button cmdClose{*this, IDC_cmdClose};
  std::optional<clsIni> ini_;  // held while the window exists; nothing is kept in it
  Work* work_ = nullptr;       // what is being done while window events run
  bool keepListRead_ = false;  // or there is no file; otherwise the list says nothing about what is in it
};

}  // namespace cookies
