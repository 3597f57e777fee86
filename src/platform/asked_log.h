// A control that shows what a run does, for example the list with its log, and tells more when it is asked: a tooltip over a
// line, and by a double click, Enter or the context key (or the right button) the window "Quellix-What stayed".
#pragma once

#include "platform/dialog.h"
#include "platform/frmStayed.h"
#include "platform/tally.h"
#include "platform/win32.h"

namespace platform {

class AskedLog : public DialogPart {
 public:
  // After the control itself among the members of the dialog. A line of a list box is a line of the tally, and the last one,
  // after an empty one, is about them all. Any other control is about them all.
  AskedLog(Dialog& dialog, int id) : dialog_(dialog), id_(id) { dialog.Add(*this); }
  AskedLog(const AskedLog&) = delete;
  AskedLog& operator=(const AskedLog&) = delete;

  Tally& OfRun() { return tally_; }

  // What is told is overwritten, and what shows it closed.
  void Clear();
  void Forget();

 private:
  void Attach() override;
  void Detach() override;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  bool Answer(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  int LineAt(LPARAM place) const;  // -1 for none
  int ChosenLine() const;
  TalliedLines LinesOf(int line) const;
  void PointAt(LPARAM place);
  void HideTip();
  void Tell(int line);

  Dialog& dialog_;
  int id_;
  HWND window_ = nullptr;
  HWND tip_ = nullptr;
  WNDPROC system_ = nullptr;
  bool isList_ = false;
  int pointedAt_ = -1;
  Tally tally_;
  frmStayed stayed_;
};

}  // namespace platform
