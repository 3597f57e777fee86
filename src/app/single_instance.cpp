#include "app/single_instance.h"

#include "platform/app_title.h"
#include "platform/main_window.h"
#include "platform/owned_windows.h"
#include "platform/window_answers.h"
#include "platform/window_text.h"

namespace app {
using namespace platform;

namespace {

constexpr char kInstanceClass[] = "QuellixMain";
constexpr char kInstanceMark[] = "Quellix";  // a property of the hidden window

// The main window of the instance that `hidden` belongs to. What else lies between the two is stepped over.
HWND FindMainWindowBefore(HWND hidden) {
  DWORD process = 0;
  ::GetWindowThreadProcessId(hidden, &process);
  for (HWND window = ::GetWindow(hidden, GW_HWNDPREV); window != nullptr; window = ::GetWindow(window, GW_HWNDPREV)) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner == process && ClassOfWindow(window) == kMainWindowClass) return window;
  }
  return nullptr;
}

// Another program may have a window of that class and title. Null for none of ours.
HWND FindRunningInstance(const std::string& title) {
  HWND window = nullptr;
  do {
    window = ::FindWindowExA(nullptr, window, kInstanceClass, title.c_str());
  } while (window != nullptr && ::GetPropA(window, kInstanceMark) == nullptr);
  return window;
}

// One that hangs would keep this start waiting for ever.
void BringForward(HWND window) {
  if (!AnswersWithin(2000, window)) return;
  ::OpenIcon(window);
  if (!::IsWindowVisible(window)) ::ShowWindow(window, SW_SHOW);  // hidden without being minimised
  ::SetForegroundWindow(WindowInFront(window));
}

// A request to close that comes to the hidden window, for example from a program that ends others politely, is meant for the
// program: the main window saves before it goes, and would go unsaved with its owner.
LRESULT CALLBACK InstanceProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_CLOSE) return ::DefWindowProcA(window, message, wParam, lParam);
  if (MainWindowHandle != nullptr) ::PostMessageA(MainWindowHandle, WM_CLOSE, 0, 0);
  return 0;
}

}  // namespace

void ShowPrevInstance() {
  const std::string remembered = AppTitle;
  AppTitle = "Program already runnning - This App Will Be Closed";
  const HWND running = FindRunningInstance(remembered);
  if (running == nullptr) return;
  const HWND window = FindMainWindowBefore(running);
  if (window != nullptr) BringForward(window);
  ::ExitProcess(0);
}

HWND CreateInstanceWindow() {
  WNDCLASSA instance{};
  instance.lpfnWndProc = &InstanceProcedure;
  instance.hInstance = ::GetModuleHandleA(nullptr);
  instance.lpszClassName = kInstanceClass;
  ::RegisterClassA(&instance);
  const HWND window = ::CreateWindowExA(WS_EX_TOOLWINDOW, kInstanceClass, QUELLIX_PRODUCT_NAME, WS_POPUP, 0, 0, 0, 0,
                                        nullptr, nullptr, instance.hInstance, nullptr);
  ::SetPropA(window, kInstanceMark, window);
  return window;
}

StartTurn::StartTurn() : turn_(::CreateMutexA(nullptr, FALSE, "QuellixStart")) {
  constexpr DWORD kLongestStart = 10000;
  if (turn_ != nullptr) ::WaitForSingleObject(turn_, kLongestStart);
}

StartTurn::~StartTurn() {
  if (turn_ == nullptr) return;
  ::ReleaseMutex(turn_);
  ::CloseHandle(turn_);
}

}  // namespace app
