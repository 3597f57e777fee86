// Times two programs from CreateProcess to a visible window, in turn.
//
// usage: bench_start PAIRS PROGRAM_A TITLE_A PROGRAM_B TITLE_B
// Prints a line "a<TAB>b" in milliseconds for each pair. Each program is ended before the next starts.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Search {
  DWORD process;
  const char* title;
  bool visible;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char title[200] = "";
  if (process != search.process || !IsWindowVisible(window)) return TRUE;
  GetWindowTextA(window, title, sizeof title);
  search.visible = std::string(title) == search.title;
  return !search.visible;
}

double StartMilliseconds(const char* program, const char* title) {
  LARGE_INTEGER frequency, before, after;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&before);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(program, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) std::exit(3);
  Search search{process.dwProcessId, title, false};
  while (!search.visible) {
    EnumWindows(&Look, reinterpret_cast<LPARAM>(&search));
    if (WaitForSingleObject(process.hProcess, 1) == WAIT_OBJECT_0) std::exit(4);
  }
  QueryPerformanceCounter(&after);
  TerminateProcess(process.hProcess, 0);
  WaitForSingleObject(process.hProcess, 10000);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 6) return 2;
  SetThreadDesktop(OpenDesktopA("quellix", 0, FALSE, MAXIMUM_ALLOWED));
  StartMilliseconds(arguments[2], arguments[3]);  // warms both up, uncounted
  StartMilliseconds(arguments[4], arguments[5]);
  for (int pair = 0; pair < std::atoi(arguments[1]); ++pair) {
    const double a = StartMilliseconds(arguments[2], arguments[3]);
    const double b = StartMilliseconds(arguments[4], arguments[5]);
    std::printf("%.3f\t%.3f\n", a, b);
  }
  return 0;
}
