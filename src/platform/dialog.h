// A window made of a dialog template: one static procedure talks to the system and forwards to the object.
//
// The object is attached on WM_INITDIALOG, with its controls, and detached on WM_NCDESTROY; no exception leaves the
// procedure, and the pending error is after an event what it was before: an event comes in the middle of somebody's
// statement.
#pragma once

#include <optional>
#include <vector>

#include "platform/win32.h"

namespace platform {

// What a dialog attaches when its window exists, and detaches when the window goes.
class DialogPart {
 public:
  virtual void Attach() = 0;
  virtual void Detach() = 0;

  // The scheme of colours has changed.
  virtual void OnColours() {}

  // A control of the dialog was clicked; told to the parts before the dialog itself.
  virtual void OnClick(int /*id*/) {}

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

  // What the control tells of clicks meanwhile is not one of its user's; 0 for none.
  void IgnoreClicksOf(int id) { ignored_ = id; }

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

  // Gives a control the keyboard the way that a dialog does it: the default button follows. Null for the next one in the tab
  // order.
  void MoveFocusTo(HWND control);

  // The controls are attached by now.
  virtual void OnInit() {}

  // A message for a control of the window, before the window's keyboard handling sees it. True when it is done with.
  virtual bool OnKey(const MSG& /*message*/) { return false; }

  // A control was clicked (BN_CLICKED), or a menu entry or an accelerator chosen.
  virtual void OnClick(int /*id*/) {}

  // Any other notification of a control: LBN_DBLCLK and its like.
  virtual void OnNotification(int /*id*/, int /*notification*/) {}

  // Esc, and the close box unless OnClose decides otherwise.
  virtual void OnCancel() { Close(); }
  virtual void OnClose() { OnCancel(); }

  virtual void OnTimer(UINT_PTR /*timer*/) {}

  // The answer to a message that is none of the above; none leaves it to the system. The procedure sees to it that the
  // answer gets where the system looks for it, which differs between the messages.
  virtual std::optional<LRESULT> OnMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return {}; }

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  bool Adopt(HWND window);
  INT_PTR Forward(UINT message, WPARAM wParam, LPARAM lParam);
  bool Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  void TellClick(int id);
  void TellClickOfControl(int id);
  void TellColours();

  HWND window_ = nullptr;
  HWND disabledOwner_ = nullptr;
  int ignored_ = 0;
  std::vector<DialogPart*> parts_;
};

}  // namespace platform
