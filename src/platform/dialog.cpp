#include "platform/dialog.h"

#include <algorithm>
#include <utility>

#include "platform/message_pump.h"
#include "platform/runtime_error.h"

namespace platform {

namespace {

// The dialogs that are windows of their own, in the order in which they were opened.
std::vector<HWND> openWindows;

bool IsWindowOfItsOwn(HWND window) { return (::GetWindowLongA(window, GWL_STYLE) & WS_CHILD) == 0; }

}  // namespace

HWND Dialog::Create(int id, HWND parent) {
  return ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), parent, &Dialog::Procedure,
                              reinterpret_cast<LPARAM>(this));
}

void Dialog::Click(int id) {
  const PendingErrorKept kept;
  quietly([this, id] { OnCommand(id, BN_CLICKED); });
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
  return owner != openWindows.end() && ::IsDialogMessageA(*owner, &message) != 0;
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

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    reinterpret_cast<Dialog*>(lParam)->window_ = window;
    if (IsWindowOfItsOwn(window)) openWindows.push_back(window);
    ::SetWindowLongA(window, DWL_USER, static_cast<LONG>(lParam));
  }
  auto* const self = reinterpret_cast<Dialog*>(::GetWindowLongA(window, DWL_USER));
  if (self == nullptr) return FALSE;
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

INT_PTR Dialog::Forward(UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  if (OnMessage(message, wParam, lParam, result)) {
    if (answerDirectly_ != 0) return std::exchange(answerDirectly_, 0);
    ::SetWindowLongA(window_, DWL_MSGRESULT, static_cast<LONG>(result));
    return TRUE;
  }
  if (message == WM_INITDIALOG) {
    for (DialogPart* part : parts_) part->Attach();
    OnInit();
    return FALSE;  // the main window decides where the keyboard is
  }
  if (message != WM_COMMAND) return FALSE;
  OnCommand(LOWORD(wParam), HIWORD(wParam));
  return TRUE;
}

}  // namespace platform
