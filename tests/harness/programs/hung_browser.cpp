// A browser that hangs: a library that opens a window of the browser's class in the process that loads it, on a thread that
// then answers nobody any more.
#include <windows.h>

namespace {

DWORD WINAPI OpenAndHang(void*) {
  WNDCLASSA form{};
  form.lpfnWndProc = &::DefWindowProcA;
  form.hInstance = ::GetModuleHandleA(nullptr);
  form.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  form.lpszClassName = "IEFrame";
  ::RegisterClassA(&form);
  const HWND window = ::CreateWindowExA(0, "IEFrame", "Hung", WS_OVERLAPPEDWINDOW, 60, 60, 300, 200, nullptr, nullptr,
                                        form.hInstance, nullptr);
  ::ShowWindow(window, SW_SHOWNOACTIVATE);  // the keyboard would hang with it
  ::Sleep(INFINITE);
  return 0;
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) ::CloseHandle(::CreateThread(nullptr, 0, &OpenAndHang, nullptr, 0, nullptr));
  return TRUE;
}
