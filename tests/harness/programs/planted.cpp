// A library with the name of one of the system's, planted where a careless program finds it: it only leaves word that it was
// loaded, in a file beside it, and asks to be let go again.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  char name[MAX_PATH + 8];
  const DWORD length = GetModuleFileNameA(instance, name, MAX_PATH);
  lstrcpyA(name + length, ".loaded");
  CloseHandle(CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  return FALSE;
}
