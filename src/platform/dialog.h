// A window made of a dialog template: one static procedure talks to the system and forwards to the object.
//
// The object is attached on WM_INITDIALOG, with its controls, and detached on WM_NCDESTROY; no exception leaves the
// procedure, and the pending error is after an event what it was before: an event comes in the middle of somebody's
// statement.
#pragma once

#include <vector>

#include "platform/win32.h"

namespace platform {

// What a dialog attaches when its window stands, and detaches when the window goes.
class DialogPart {
 public:
  virtual void Attach() = 0;
  virtual void Detach() = 0;

 protected:
  ~DialogPart() = default;
};

class Dialog {
 public:
  Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Null before the window is created and after it is destroyed.
  HWND Handle() const { return window_; }

  // A member of the derived class, in the order of the members.
  void Add(DialogPart& part) { parts_.push_back(&part); }

  // What a click on the control does, whether or not there is a window yet.
  void Click(int id);

  // The keys of the dialog window that the message belongs to: tab order, Enter, Esc. True when it was one of them.
  static bool TranslateKeys(MSG& message);

 protected:
  ~Dialog() = default;

  // Makes the modeless window of template `id`; null on failure, with the reason in GetLastError.
  HWND Create(int id, HWND parent);

  // Shows the modal window of template `id` over `owner`, which takes no input meanwhile, and returns once it is closed.
  // Window events run. Does nothing when the window cannot be created.
  void RunModal(int id, HWND owner);

  // Destroys the window; the owner of a modal one takes input again.
  void Close();

  // Puts the window over the middle of another one, as far as it stays on the screen.
  void PlaceOver(HWND other);

  // The controls are attached by now.
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
  HWND disabledOwner_ = nullptr;
  std::vector<DialogPart*> parts_;
};

}  // namespace platform
