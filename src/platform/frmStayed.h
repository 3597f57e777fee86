// The window "Quellix-What stayed": what the lines of a log did, and every trace that stayed with the reason. It reads the
// tally as it draws and keeps no name.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/dialog.h"
#include "platform/frmStayed_ids.h"
#include "platform/tally.h"

namespace platform {

// Lines of a tally, from the first to the one before `end`, and the control that shows the log; `line` is the one that was
// asked.
struct TalliedLines {
  const Tally* tally;
  HWND control;
  bool isList;  // any other control is one line, with its text
  int line;
  std::size_t first, end;

  // As the control shows it.
  struct Caption {
    char text[256];  // the lines of a list are the program's own and shorter
  };
  Caption CaptionOf(int ofLine) const;
};

class frmStayed final : public Dialog {
 public:
  // Opens the window, or shows these lines in the open one. The main window stays usable beside it. Nothing while the main
  // window is out of sight.
  void Show(const TalliedLines& lines);

  // Closes it.
  void Forget() { ::DestroyWindow(Handle()); }

 private:
  void OnInit() override;
  void OnClick(int id) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  LRESULT SendToList(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendDlgItemMessageA(Handle(), IDC_lstStayed, message, wParam, lParam);
  }
  WideText TextAt(int row, int column) const;
  void Copy() const;

  TalliedLines lines_ = {};
};

}  // namespace platform
