// A window made of a dialog template: one static procedure talks to the system and forwards to the object.
//
// The object is attached on WM_INITDIALOG and detached on WM_NCDESTROY; no exception leaves the procedure. A failing
// handler leaves its error pending in Err, as a user-interface handler does.
#pragma once

#include "platform/win32.h"

class Dialog {
 public:
  Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  HWND Handle() const { return window_; }

 protected:
  ~Dialog() = default;

  // Makes the modeless window of template `id`; null on failure, with the reason in GetLastError.
  HWND Create(int id, HWND parent);

  virtual void OnInit() {}
  virtual void OnCommand(int /*id*/, int /*notification*/) {}

  // The answer to a message that is neither of the above. False leaves it to the system. A colour message is answered
  // through `answerDirectly_`: its result is what the procedure itself returns.
  virtual bool OnMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/, LRESULT& /*result*/) { return false; }

  INT_PTR answerDirectly_ = 0;

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Forward(UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
};
