// One of the frames of the main window. A panel makes, loads, mirrors, enables and saves its own controls, which nobody
// outside sees; the window only chooses which one is on show and passes on when settings are loaded and saved.
#pragma once

#include <string>

#include "platform/dialog.h"

namespace platform {

class Panel : public Dialog {
 public:
  // The template, and in it the group box that the controls lie in and that shows the panel's caption.
  Panel(int templateId, int frameId) : templateId_(templateId), frameId_(frameId) {}

  // The window inside `parent`; null on failure. The controls keep what they are given before.
  HWND Create(HWND parent) { return Dialog::Create(templateId_, parent); }

  // The caption of the group box; empty before there is a window.
  std::string Caption() const;

  // What else happens when the panel is chosen: before and after it comes to the front.
  virtual void BeforeFront() {}
  virtual void AfterFront() {}

  // The panel's share of the main window's procedures of these names. A failing statement of the first is passed over; the
  // second raises, and what comes after is not loaded.
  virtual void LoadEraseSettings() {}
  virtual void LoadGeneralSettings() {}

  // Puts into the settings variables what only the panel's controls know; the first step of saving.
  virtual void KeepSettings() {}

 protected:
  ~Panel() = default;

  // Esc belongs to the main window, which gives it no meaning.
  void OnCancel() override {}

 private:
  int templateId_;
  int frameId_;
};

}  // namespace platform
