// What the rooms below the main window need of it, through one small interface.
#pragma once

#include <string>

#include "platform/win32.h"

namespace platform {

class MainWindow {
 public:
  virtual HWND Window() const = 0;

  // The second panel of the status bar.
  virtual void SetStatusText(const std::string& text) = 0;

  // What a press of "Erase Only" and of "Erase" on the main settings panel does.
  virtual void EraseOnly() = 0;

  // What a press of the navigation button "Erase" does.
  virtual void ShowErasePanel() = 0;

  // What a press of "Run invisibly now" does, and what the boss key does.
  virtual void RunInvisibly() = 0;
  virtual void HideByBossKey() = 0;

  // The boss key's name, in the large label of the main settings panel.
  virtual void ShowBossKey(const std::string& name) = 0;

  // The caption of the panel on show.
  virtual std::string PanelCaption() const = 0;

  // What was chosen, into the store; errors are passed over.
  virtual void SaveAllSettings() = 0;

  // Overwrites what is kept of every run, and closes the windows that show it.
  virtual void ForgetRuns() = 0;

  // The notification icon, added again or removed.
  virtual void ShowIcon(bool shown) = 0;

 protected:
  ~MainWindow() = default;
};

// The main window's handle for system calls that want an owner; null while there is none.
inline HWND MainWindowHandle = nullptr;

// True once the main window has been on the screen.
inline bool MainWindowWasShown = false;

}  // namespace platform
