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

bool MayShowMessages() { return noMessages == 0; }

HWND WindowInFront(HWND mainWindow) {
  if (mainWindow == nullptr || ::IsWindowEnabled(mainWindow)) return mainWindow;
  OwnedWindow search{mainWindow, mainWindow};
  ::EnumWindows(&LookForOpenWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

int ShowMessage(const std::string& text, UINT style) { return ShowMessage(text, AppTitle, style); }

int ShowMessage(const std::string& text, const std::string& title, UINT style) {
  if (!MayShowMessages()) return 0;
  return ::MessageBoxA(WindowInFront(MainWindowHandle), text.c_str(), title.c_str(), style);
}

bool IsSomethingAsked() { return MainWindowHandle != nullptr && !::IsWindowEnabled(MainWindowHandle); }

}  // namespace platform
