#include "platform/message_box.h"

#include "platform/app_title.h"
#include "platform/main_window.h"
#include "platform/owned_windows.h"

namespace platform {

namespace {

int noMessages = 0;  // how many live

}  // namespace

NoMessages::NoMessages() { ++noMessages; }

NoMessages::~NoMessages() { --noMessages; }

bool MayShowMessages() {
  const bool outOfSight = MainWindowHandle != nullptr && MainWindowWasShown && !::IsWindowVisible(MainWindowHandle);
  return noMessages == 0 && !outOfSight;
}

void ShowMessage(const std::string& text, UINT style) { ShowMessage(text, AppTitle, style); }

void ShowMessage(const std::string& text, const std::string& title, UINT style) {
  if (MayShowMessages()) AskUser(text, title, style);
}

int AskUser(const std::string& question, const std::string& title, UINT style) {
  return ::MessageBoxA(WindowInFront(MainWindowHandle), question.c_str(), title.c_str(), style);
}

bool IsSomethingAsked() { return MainWindowHandle != nullptr && !::IsWindowEnabled(MainWindowHandle); }

}  // namespace platform
