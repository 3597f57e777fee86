// Stops the timer of the program's scheduler: a library that is loaded into the program. A test that sends the ticks itself
// then takes as long as it likes. Only the thread that has set a timer can stop it, so that thread is called to do it.
#include <windows.h>

#include <cstring>

namespace {

constexpr UINT_PTR kScheduler = 2;

HWND mainWindow = nullptr;
HHOOK hook = nullptr;

BOOL CALLBACK FindMainWindow(HWND window, LPARAM) {
  char name[16] = "";
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  ::GetClassNameA(window, name, sizeof name);
  if (process == ::GetCurrentProcessId() && std::strcmp(name, "frmMain") == 0) mainWindow = window;
  return mainWindow == nullptr;
}

LRESULT CALLBACK StopTimer(int code, WPARAM wParam, LPARAM lParam) {
  const LRESULT result = ::CallNextHookEx(hook, code, wParam, lParam);
  ::KillTimer(mainWindow, kScheduler);
  ::UnhookWindowsHookEx(hook);
  return result;
}

bool CallItsThread(HINSTANCE library) {
  ::EnumWindows(FindMainWindow, 0);
  const DWORD thread = mainWindow ? ::GetWindowThreadProcessId(mainWindow, nullptr) : 0;
  if (thread) hook = ::SetWindowsHookExA(WH_GETMESSAGE, &StopTimer, library, thread);
  return hook && ::PostMessageA(mainWindow, WM_NULL, 0, 0);
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
  return reason != DLL_PROCESS_ATTACH || CallItsThread(library);
}
