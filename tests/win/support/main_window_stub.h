// The main window of a test that needs none: the panel under test asks it for nothing but the owner of its boxes.
#pragma once

#include "platform/main_window.h"

using namespace platform;

class MainWindowStub final : public MainWindow {
 public:
  explicit MainWindowStub(HWND window = nullptr) : window_(window) {}

  HWND Window() const override { return window_; }
  void SetStatusText(const std::string&) override {}
  void EraseOnly() override {}
  void ShowErasePanel() override {}
  void RunInvisibly() override {}
  void HideByBossKey() override {}
  void ShowBossKey(const std::string&) override {}
  std::string PanelCaption() const override { return {}; }
  void SaveAllSettings() override {}
  void ForgetRuns() override {}
  void ShowIcon(bool) override {}

 private:
  HWND window_;
};
