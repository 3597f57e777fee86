#include "platform/dialog.h"

#include <utility>

#include "platform/runtime_error.h"

HWND Dialog::Create(int id, HWND parent) {
  return ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), parent, &Dialog::Procedure,
                              reinterpret_cast<LPARAM>(this));
}

void Dialog::Click(int id) {
  resumeNext([this, id] { OnCommand(id, BN_CLICKED); });
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    reinterpret_cast<Dialog*>(lParam)->window_ = window;
    ::SetWindowLongA(window, DWL_USER, static_cast<LONG>(lParam));
  }
  auto* const self = reinterpret_cast<Dialog*>(::GetWindowLongA(window, DWL_USER));
  if (self == nullptr) return FALSE;
  INT_PTR answer = FALSE;
  resumeNext([&] { answer = self->Forward(message, wParam, lParam); });
  if (message == WM_NCDESTROY) {
    ::SetWindowLongA(window, DWL_USER, 0);
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
