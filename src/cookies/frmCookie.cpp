#include "cookies/frmCookie.h"

#include <cstddef>
#include <string>
#include <vector>

#include "cleaners/cache_entry_rule.h"
#include "cleaners/url_cache_walk.h"
#include "cookies/keep_list.h"
#include "cookies/mdCookies.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/path.h"
#include "platform/special_folder.h"
#include "platform/whole_file.h"
#include "platform/wide_text.h"

namespace cookies {
using namespace platform;

namespace {
Path KeepListFile() { return ProgramFolder() / Wide<"SafeCookie.dat">(); }
}  // namespace

// Filling and moving let window events run, and one of them may close the window, even open it anew: the work that was
// going on is then over. Meanwhile nothing else begins, so that no half-filled list is moved or saved: the buttons are
// disabled. A button that has the keyboard gets it back, unless its user took it elsewhere.
class frmCookie::Work {
 public:
  explicit Work(frmCookie& form) : form_(form), focus_(::GetFocus()) {
    form_.work_ = this;
    if (::IsChild(form_.Handle(), focus_)) form_.MoveFocusTo(form_.lstKeeplist.Handle());
    form_.EnableButtons(false);
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  ~Work() {
    if (over_) return;
    form_.work_ = nullptr;
    form_.EnableButtons(true);
    if (::GetFocus() == form_.lstKeeplist.Handle() && ::IsChild(form_.Handle(), focus_)) form_.MoveFocusTo(focus_);
  }

  void End() {
    over_ = true;
    form_.work_ = nullptr;
  }
  const bool& Over() const { return over_; }

 private:
  frmCookie& form_;
  HWND focus_;
  bool over_ = false;
};

void frmCookie::Show() {
  if (Handle() == nullptr && Create(IDD_frmCookie, window_.Window()) == nullptr) return;
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
}

void frmCookie::OnInit() {
  PlaceOver(window_.Window());
  ini_.emplace();
  EnableButtons(false);  // until the lists are filled
  keepListRead_ = false;
  MoveFocusTo(lstKeeplist.Handle());
  ::PostMessageA(Handle(), WM_COMMAND, MAKEWPARAM(IDC_cmdRefresh, BN_CLICKED), 0);  // fills it once it is on the screen
}

// A double click on a line moves it.
void frmCookie::OnNotification(int id, int notification) {
  if (notification == LBN_DBLCLK) OnClick(id);
}

void frmCookie::OnClick(int id) {
  if (work_ != nullptr) return;
  switch (id) {
    case IDC_lstKeeplist:
    case IDC_cmdAdd:
      return MoveSelected(lstKeeplist, SafeList);
    case IDC_SafeList:
    case IDC_cmdRemove:
      return MoveSelected(SafeList, lstKeeplist);
    case IDC_cmdAddAll:
      return MoveAll(lstKeeplist, SafeList);
    case IDC_cmdRemoveAll:
      return MoveAll(SafeList, lstKeeplist);
    case IDC_cmdRefresh:
      return Load();
    case IDC_cmdClose:
      return SaveAndClose();
  }
}

void frmCookie::EnableButtons(bool enabled) {
  for (Button* button : {&cmdAdd, &cmdAddAll, &cmdRemove, &cmdRemoveAll, &cmdRefresh, &cmdClose})
    button->SetEnabled(enabled);
}

void frmCookie::Load() {
  const Work work(*this);
  MendWholeFile(KeepListFile());
  if (IsTooLarge(KeepListFile())) {
    ShowMessage("The list of cookies to keep is larger than 16 MB. Quellix does not load it.", MB_ICONEXCLAMATION);
    if (::IsWindowVisible(Handle())) ::SetForegroundWindow(Handle());  // the message was one of the main window
  }
  const bool read = LoadList(SafeList, KeepListFile(), &work.Over());
  if (work.Over()) return;
  keepListRead_ = read;
  ShowCurrentCookies(work);
  if (!work.Over()) SafeList.Select(SafeList.ListCount() - 1);  // the line that was looked up last
}

// The kept ones come first, in the keep list's order, so that each is found on the first line and not after thousands.
void frmCookie::ShowCurrentCookies(const Work& work) {
  CookieNames keepList;
  for (int line = 0; line < SafeList.ListCount(); ++line) keepList.push_back(SafeList.Item(line));
  CookieNames current;
  lstKeeplist.Clear();
  cleaners::UrlCacheWalk walk("Cookie:");
  while (walk.Next()) {
    // A cookie without a file has no name.
    if (cleaners::IsCookieUrl(walk.Url()) && !walk.LocalFile().empty())
      current.push_back(cleaners::CookieName(walk.LocalFile()));
    DoEventsNowAndThen();
    if (work.Over()) return;
  }
  const ListBox::Filling quietly(lstKeeplist);
  const std::size_t kept = PutKeptFirst(current, keepList);
  for (const WideText& name : current) {
    lstKeeplist.AddItem(name);
    DoEventsNowAndThen();
    if (work.Over()) return;
  }
  current.resize(kept);
  TakeKeptAway(current, work);
}

void frmCookie::TakeKeptAway(const CookieNames& kept, const Work& work) {
  for (const WideText& name : kept) {
    const bool found = IsKept(lstKeeplist, name);
    if (work.Over()) return;
    if (found) lstKeeplist.RemoveItem(LineOf(lstKeeplist, name));
    DoEventsNowAndThen();
    if (work.Over()) return;
  }
}

void frmCookie::MoveSelected(ListBox& from, ListBox& to) {
  const int line = from.ListIndex();
  if (line < 0) return;
  to.AddItem(from.Item(line));
  from.RemoveItem(line);
  from.Select(line < from.ListCount() ? line : line - 1);  // the next one, for the next press
}

void frmCookie::MoveAll(ListBox& from, ListBox& to) {
  const Work work(*this);
  const ListBox::Filling quietly(to);
  const ListBox::Filling quietlyToo(from);
  while (from.ListCount() > 0) {
    to.AddItem(from.Item(0));
    from.RemoveItem(0);
    DoEventsNowAndThen();
    if (work.Over()) return;
  }
}

void frmCookie::SaveAndClose() {
  // A list that could not be read is not overwritten by what was added since.
  if (keepListRead_) SaveList(SafeList, KeepListFile());
  Unload();
}

void frmCookie::Unload() {
  if (work_ != nullptr) work_->End();
  ini_.reset();
  Close();
  lstKeeplist.Clear();
  SafeList.Clear();
  window_.SetStatusText("Displaying " + window_.PanelCaption());
}

}  // namespace cookies
