// Stands in for a browser, or for any other program: opens windows and closes them when it is asked to.
//
//   browser.exe REFUSAL [CLASS TITLE STATE]...
//
// For REFUSAL milliseconds from its first request on, each window refuses to close; -1 is for ever. STATE is normal,
// maximised, minimised or hidden. The program ends with its last window.
//
// Built as a library it opens three windows of the browser's class in the process that loads it. Wine places no window of
// another process, so only such ones can be hidden and brought back.
#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace {

int refusal = 0;
int windowCount = 0;

bool Refuses(HWND window) {
  if (refusal < 0) return true;
  // The window's own memory: the time of the first request, which is odd and so never 0.
  const DWORD first = static_cast<DWORD>(::GetWindowLongA(window, GWL_USERDATA));
  if (first == 0) ::SetWindowLongA(window, GWL_USERDATA, static_cast<LONG>((::GetTickCount() - 1) | 1));
  return refusal > 0 && (first == 0 || ::GetTickCount() - first < static_cast<DWORD>(refusal));
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE && Refuses(window)) return 0;
  if (message == WM_NCDESTROY && --windowCount == 0) ::PostQuitMessage(0);
  return ::DefWindowProcA(window, message, wParam, lParam);
}

void Open(const char* className, const char* title, const char* state) {
  WNDCLASSA form{};
  form.lpfnWndProc = &Procedure;
  form.hInstance = ::GetModuleHandleA(nullptr);
  form.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
  form.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  form.lpszClassName = className;
  ::RegisterClassA(&form);
  const int place = 40 + 30 * windowCount;
  const HWND window = ::CreateWindowExA(0, className, title, WS_OVERLAPPEDWINDOW, place, place, 300, 200, nullptr, nullptr,
                                        form.hInstance, nullptr);
  if (!window) return;
  ++windowCount;
  if (std::strcmp(state, "hidden") == 0) return;
  const int show = std::strcmp(state, "maximised") == 0   ? SW_SHOWMAXIMIZED
                   : std::strcmp(state, "minimised") == 0 ? SW_SHOWMINIMIZED
                                                          : SW_SHOWNORMAL;
  ::ShowWindow(window, show);
}

void RunUntilTheLastIsClosed() {
  MSG message;
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
}

DWORD WINAPI OpenThree(void*) {
  Open("IEFrame", "One", "normal");
  Open("IEFrame", "Two", "maximised");
  Open("IEFrame", "Three", "minimised");
  RunUntilTheLastIsClosed();
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 5) return 99;
  refusal = std::atoi(arguments[1]);
  for (int at = 2; at + 2 < count; at += 3) Open(arguments[at], arguments[at + 1], arguments[at + 2]);
  RunUntilTheLastIsClosed();
  return 0;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) ::CloseHandle(::CreateThread(nullptr, 0, &OpenThree, nullptr, 0, nullptr));
  return TRUE;
}
