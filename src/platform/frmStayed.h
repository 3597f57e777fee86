// The window "Quellix-What stayed": what lines of a log did, and every trace that stayed with the reason. It reads the tally
// as it draws and keeps no name.
#pragma once

#include <optional>

#include "platform/dialog.h"
#include "platform/frmStayed_ids.h"
#include "platform/tally.h"

namespace platform {

// Enter, held down since it opened or closed a window: the next one is not for it.
constexpr bool IsRepeatedEnter(UINT message, WPARAM wParam, LPARAM lParam) {
  return message == WM_KEYDOWN && wParam == VK_RETURN && (lParam & 0x40000000) != 0;
}

class frmStayed final : public Dialog {
 public:
  // Opens the window, or shows these lines in the open one. The main window stays usable beside it. Nothing while the main
  // window is out of sight. `log` is the control that shows the log, `line` the line of it that was asked.
  void Show(const Tally& tally, Tally::Lines lines, HWND log, std::size_t line);

  // Closes it where it shows this tally.
  void Forget(const Tally& tally);

 private:
  void OnInit() override;
  bool OnKey(const MSG& message) override { return IsRepeatedEnter(message.message, message.wParam, message.lParam); }
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
