// A control that shows what a run does, for example the list with its log, and tells more when it is asked: a tooltip over a
// line, and by a double click, Enter or the context key (or the right button) the window "Quellix-What stayed".
#pragma once

#include "platform/tally.h"
#include "platform/win32.h"

namespace platform {

class AskedLog {
 public:
  AskedLog() = default;
  AskedLog(const AskedLog&) = delete;
  AskedLog& operator=(const AskedLog&) = delete;
  ~AskedLog() { Leave(); }

  // A line of a list box is a line of the tally; any other control is one line. It is told to this object from now on.
  void Attach(HWND control);

  Tally& OfRun() { return tally_; }

  // The tooltips of all of them, when the main window goes out of sight.
  static void HideTips();

  // What is told is overwritten, and what shows it closed.
  void Clear();
  void Forget();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Leave();  // is not found any more
  bool Answer(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Ask(UINT message, WPARAM wParam, LPARAM lParam) const;
  void PointAt(LPARAM place);
  void HideTip();  // the next one is a new one
  void Tell(LRESULT line);

  // All that are attached, by which a control's is found: a window that would have to tell might not.
  static inline AskedLog* first_ = nullptr;
  AskedLog* next_ = nullptr;

  HWND window_ = nullptr;
  HWND tip_ = nullptr;  // which the system destroys with its owner
  WNDPROC system_ = nullptr;
  LRESULT pointedAt_ = -1;
  Tally tally_;
};

}  // namespace platform
