#include "platform/message_box.h"

#include "platform/app_title.h"
#include "platform/main_window.h"

namespace platform {

namespace {

struct OwnedWindow {
  HWND owner;
  HWND found;
};

BOOL CALLBACK LookForOpenWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<OwnedWindow*>(parameter);
  if (::GetWindow(window, GW_OWNER) != search.owner || !::IsWindowVisible(window) || !::IsWindowEnabled(window)) return TRUE;
  search.found = window;
  return FALSE;
}

int noMessages = 0;  // how many live

}  // namespace

NoMessages::NoMessages() { ++noMessages; }

NoMessages::~NoMessages() { --noMessages; }

bool MayShowMessages() {
  const bool outOfSight = MainWindowHandle != nullptr && MainWindowWasShown && !::IsWindowVisible(MainWindowHandle);
  return noMessages == 0 && !outOfSight;
}

HWND WindowInFront(HWND mainWindow) {
  if (mainWindow == nullptr || ::IsWindowEnabled(mainWindow)) return mainWindow;
  OwnedWindow search{mainWindow, mainWindow};
  ::EnumWindows(&LookForOpenWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
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
