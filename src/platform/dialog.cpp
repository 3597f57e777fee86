#include "platform/dialog.h"

#include <algorithm>
#include <utility>

#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace platform {

namespace {

// The dialogs that are windows of their own, in the order in which they were opened.
std::vector<HWND> openWindows;

// A menu entry comes as a click does. An accelerator comes with the code 1, which controls use as well; it has no window.
bool IsFromAccelerator(WPARAM wParam, LPARAM lParam) { return HIWORD(wParam) == 1 && lParam == 0; }

// The messages whose answer is what the dialog procedure itself returns; every other answer is left in the window.
bool IsAnsweredDirectly(UINT message) {
  switch (message) {
    case WM_CHARTOITEM:
    case WM_COMPAREITEM:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
    case WM_QUERYDRAGICON:
    case WM_VKEYTOITEM:
      return true;
    default:
      return false;
  }
}

bool IsWindowOfItsOwn(HWND window) { return (::GetWindowLongA(window, GWL_STYLE) & WS_CHILD) == 0; }

}  // namespace

// As a wide window where the system has them: its lists show names that the code page lacks.
HWND Dialog::Create(int id, HWND parent) {
  const auto self = reinterpret_cast<LPARAM>(this);
  if (UsesWideNames())
    late::CreateDialogParamWide(::GetModuleHandleA(nullptr), MAKEINTRESOURCEW(id), parent, &Dialog::Procedure, self);
  else
    ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), parent, &Dialog::Procedure, self);
  return Handle();
}

void Dialog::Click(int id) {
  const PendingErrorKept kept;
  quietly([this, id] { TellClick(id); });
}

void Dialog::TellClick(int id) {
  for (DialogPart* part : parts_) part->OnClick(id);
  OnClick(id);
}

void Dialog::TellClickOfControl(int id) {
  if (id != ignored_) TellClick(id);
}

// The system tells the windows of the desktop alone.
void Dialog::TellColours() {
  for (DialogPart* part : parts_) part->OnColours();
  for (HWND child = ::GetWindow(window_, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT))
    ::SendMessageA(child, WM_SYSCOLORCHANGE, 0, 0);
}

void Dialog::MoveFocusTo(HWND control) {
  ::SendMessageA(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), control != nullptr);
}

void Dialog::RunModal(int id, HWND owner) {
  if (Create(id, owner) == nullptr) return;
  PlaceOver(owner);
  if (::IsWindowEnabled(owner)) disabledOwner_ = owner;
  ::EnableWindow(owner, FALSE);
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
  while (Handle() != nullptr) WaitForEvents(INFINITE);
}

// The owner takes input before the window goes: otherwise the system would activate another program's.
void Dialog::Close() {
  if (disabledOwner_ != nullptr) ::EnableWindow(std::exchange(disabledOwner_, nullptr), TRUE);
  ::DestroyWindow(Handle());
}

bool Dialog::TranslateKeys(MSG& message) {
  const auto owner = std::find_if(openWindows.begin(), openWindows.end(), [&message](HWND window) {
    return window == message.hwnd || ::IsChild(window, message.hwnd);
  });
  if (owner == openWindows.end()) return false;
  auto* const dialog = reinterpret_cast<Dialog*>(::GetWindowLongA(*owner, DWL_USER));
  return (dialog != nullptr && dialog->OnKey(message)) || ::IsDialogMessageA(*owner, &message) != 0;
}

void Dialog::PlaceOver(HWND other) {
  RECT work{};
  RECT below{};
  RECT own{};
  ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  ::GetWindowRect(other, &below);
  ::GetWindowRect(Handle(), &own);
  const LONG width = own.right - own.left;
  const LONG height = own.bottom - own.top;
  const LONG left = std::min((below.left + below.right - width) / 2, work.right - width);
  const LONG top = std::min((below.top + below.bottom - height) / 2, work.bottom - height);
  ::SetWindowPos(Handle(), nullptr, std::max(left, work.left), std::max(top, work.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// False where the two cannot be made to know each other.
bool Dialog::Adopt(HWND window) {
  const RuntimeError failure = failureOf([window] {
    if (IsWindowOfItsOwn(window)) openWindows.push_back(window);
  });
  const LONG self = reinterpret_cast<LONG>(this);
  ::SetWindowLongA(window, DWL_USER, self);
  if (!failure && ::GetWindowLongA(window, DWL_USER) == self) window_ = window;
  if (window_ != window) std::erase(openWindows, window);
  return window_ == window;
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // A window that knows nothing of its dialog could not even be closed.
  if (message == WM_INITDIALOG && !reinterpret_cast<Dialog*>(lParam)->Adopt(window)) return ::DestroyWindow(window);
  auto* const self = reinterpret_cast<Dialog*>(::GetWindowLongA(window, DWL_USER));
  if (self == nullptr || self->window_ != window) return FALSE;
  const PendingErrorKept kept;
  INT_PTR answer = FALSE;
  quietly([&] { answer = self->Forward(message, wParam, lParam); });
  if (message == WM_NCDESTROY) {
    ::SetWindowLongA(window, DWL_USER, 0);
    std::erase(openWindows, window);
    for (DialogPart* part : self->parts_) part->Detach();
    self->window_ = nullptr;
  }
  return answer;
}

// True when the message was one that the dialog has a procedure of its own for.
bool Dialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (LOWORD(wParam) == IDCANCEL)
        OnCancel();
      else if (HIWORD(wParam) == BN_CLICKED || IsFromAccelerator(wParam, lParam))
        TellClickOfControl(LOWORD(wParam));
      else
        OnNotification(LOWORD(wParam), HIWORD(wParam));
      return true;
    case WM_CLOSE:
      OnClose();
      return true;
    case WM_TIMER:
      OnTimer(wParam);
      return true;
    default:
      return false;
  }
}

INT_PTR Dialog::Forward(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SYSCOLORCHANGE) TellColours();
  if (const std::optional<LRESULT> answer = OnMessage(message, wParam, lParam)) {
    if (IsAnsweredDirectly(message)) return static_cast<INT_PTR>(*answer);
    ::SetWindowLongA(window_, DWL_MSGRESULT, static_cast<LONG>(*answer));
    return TRUE;
  }
  if (message != WM_INITDIALOG) return Dispatch(message, wParam, lParam) ? TRUE : FALSE;
  for (DialogPart* part : parts_) part->Attach();
  OnInit();
  return FALSE;  // the main window decides where the keyboard is
}

}  // namespace platform
