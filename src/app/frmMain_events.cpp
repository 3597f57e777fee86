// The main window's events: notification icon and popup menu, minimise, close, session end.
#include "app/frmMain.h"
#include "app/front_window.h"
#include "app/quellix_ids.h"
#include "app/tray_callback.h"
#include "automation/modHide.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

bool frmMain::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
  if (message == taskbarCreated_ && taskbarCreated_ != 0) {
    if (icon_.OnShow()) icon_.Add();
    return true;
  }
  switch (message) {
    case WM_COMMAND:
      return ForwardCommand(wParam, lParam);
    case WM_SIZE:
      // The window lives on in the notification area.
      if (wParam == SIZE_MINIMIZED) ::ShowWindow(Handle(), SW_HIDE);
      return false;
    case WM_SHOWWINDOW:
      // What is open over the window goes out of sight with it, and comes back with it.
      if (lParam == 0) ::ShowOwnedPopups(Handle(), wParam != 0);
      return false;
    case WM_TIMER:
      OnTimer(wParam);
      return true;
    case kTrayCallback:
      OnTrayCallback(wParam, lParam);
      return false;
    case WM_CTLCOLORSTATIC: {
      const int id = ::GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
      if (id != IDC_Picture1 && id != IDC_Image1) return false;
      answerDirectly_ = reinterpret_cast<INT_PTR>(bannerColour_.get());
      return true;
    }
    case WM_CLOSE:
      CloseQuery(false);
      Unload();
    case WM_QUERYENDSESSION:
      CloseQuery(true);
      result = TRUE;  // the close is never cancelled
      return true;
    case WM_ENDSESSION:
      if (wParam != 0) Unload();
      return true;
    default:
      return false;
  }
}

// Enter on a panel's button reaches the main window, because the keyboard is handled here; the panel gets its own.
bool frmMain::ForwardCommand(WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<HWND>(lParam);
  const HWND parent = control != nullptr ? ::GetParent(control) : nullptr;
  if (parent == nullptr || parent == Handle() || !::IsChild(Handle(), parent)) return false;
  ::SendMessageA(parent, WM_COMMAND, wParam, lParam);
  return true;
}

void frmMain::OnTrayCallback(WPARAM wParam, LPARAM lParam) {
  switch (TrayActionOf(wParam, static_cast<std::uintptr_t>(lParam), ::GetKeyState(VK_LBUTTON) < 0)) {
    case TrayAction::RestoreWindow:
      return RestoreFromIcon();
    case TrayAction::PopupMenu:
      return ShowPopupMenu();
    case TrayAction::None:
      return;
  }
}

void frmMain::RestoreFromIcon() {
  ::ShowWindow(Handle(), SW_SHOWNORMAL);
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(WindowToBringForward(Handle()));
}

void frmMain::ShowPopupMenu() {
  ::SetForegroundWindow(WindowToBringForward(Handle()));
  if (!::IsWindowEnabled(Handle())) return;  // a question is open; it is in front now
  const UniqueMenu menu(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDM_mPopupSys)));
  POINT mouse;
  ::GetCursorPos(&mouse);
  ::TrackPopupMenu(::GetSubMenu(menu.get(), 0), TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, Handle(), nullptr);
  ::PostMessageA(Handle(), WM_NULL, 0, 0);  // lets the menu close at the next click elsewhere
}

void frmMain::ShowAndActivateFromMenu() {
  automation::ShowAndActivate(Handle());
  automation::UnhideFromTaskList();
}

void frmMain::AskToExit() {
  constexpr UINT kYesNoQuestion = MB_YESNO | MB_ICONQUESTION;
  static_assert(kYesNoQuestion == 36);
  if (::MessageBoxA(Handle(), "Are you sure you want to exit Quellix?", "Confirmation", kYesNoQuestion) == IDNO) return;
  resumeNext([this] { icon_.Remove(); });
  CloseQuery(false);
  Unload();
}

void frmMain::EraseOnly() { erase::RunEraseOnly(host_); }

void frmMain::CloseQuery(bool sessionEnds) {
  // The stop request is not cleared here: after an earlier run it is still set, and the run skips every item. Meant.
  if (sessionEnds && settings::Settings[settings::Setting::Shutdown] == "1") erase::doClean(host_);
  StopErase = true;
}

// The process ends here, also from inside a running erase; nothing touches the window afterwards.
void frmMain::Unload() {
  resumeNext([this] { SaveAllSettings(); });
  resumeNext([this] { icon_.Remove(); });
  ::ExitProcess(0);
}

}  // namespace app
