// The ways in which the program goes out of sight and comes back, and the keys that the user has for them.
#pragma once

#include <cstdint>
#include <optional>

#include "automation/frmWarning.h"
#include "automation/timers.h"
#include "platform/main_window.h"

namespace automation {

struct Way;  // one row of the table in stealth.cpp
enum class Browsers { Leave, Hide, Restore };

class Stealth {
 public:
  explicit Stealth(platform::MainWindow& window) : window_(window) {}

  // The poll of the keys, from the window's design, for the whole session.
  void Start(HWND window) const { ::SetTimer(window, timeHide, 50, nullptr); }
  void OnTimer(UINT_PTR timer);

  // Out of sight, each its own way. Going invisible asks first, unless its user does not want to be asked any more.
  void HideByBossKey();
  void RunInvisibly();

  // Browsers that are hidden would stay so when the program ends.
  void BringBrowsersBack();

  // From the way out that takes the icon along to the one that brings it back.
  bool IsInvisible() const { return invisible_; }

  // Back: by a click on the icon, by an entry of its menu.
  void ComeBackFromIcon();
  void ComeBackFromMenu();

  // The boss key means nothing else: F10 would choose the system menu when it is let go after a restore. With Alt held down
  // it is another key.
  static bool IsBossKey(const MSG& message);

  // Ctrl+H and Ctrl+U mean nothing else either: Ctrl+H deletes a letter in a box to write in.
  static bool IsStealthKey(const MSG& message);

 private:
  void PollKeys();
  void Take(const Way& way);
  void TakeBrowsers(Browsers browsers);
  void TakeWindow(const Way& way);

  platform::MainWindow& window_;
  frmWarning warning_;
  bool invisible_ = false;
  bool browsersHidden_ = false;
  std::optional<std::int32_t> polledBossKey_;  // the boss key of the last look
};

}  // namespace automation
