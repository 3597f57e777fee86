// The window "Quellix-What stayed": what lines of a log did, and every trace that stayed with the reason. It reads the tally
// as it draws and keeps no name.
#pragma once

#include <optional>

#include "platform/dialog.h"
#include "platform/frmStayed_ids.h"
#include "platform/tally.h"

namespace platform {

class frmStayed final : public Dialog {
 public:
  // Opens the window, or shows these lines in the open one. The main window stays usable beside it. Nothing while the main
  // window is out of sight. `log` is the control that shows the log, `line` the line of it that was asked.
  void Show(const Tally& tally, Tally::Lines lines, HWND log, std::size_t line);

  // Closes it where it shows this tally.
  void Forget(const Tally& tally);

 private:
  void OnInit() override;
  void OnClick(int id) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  LRESULT SendToList(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendDlgItemMessageA(Handle(), IDC_lstStayed, message, wParam, lParam);
  }
  void AddColumn(int column, const char* heading, int width) const;
  const char* Caption(std::size_t line);
  const wchar_t* TextAt(int row, int column) const;
  void Copy();

  const Tally* tally_ = nullptr;
  Tally::Lines lines_ = {};
  HWND log_ = nullptr;
  char caption_[256] = "";  // longer than the lines of a log
};

}  // namespace platform
