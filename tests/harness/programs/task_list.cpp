// Tells which calls a program makes to leave the task list and to come back into it: a library that is loaded into the
// program and takes the place of the system's function there. Every call for the program itself adds its second argument,
// 1 or 0, to a file, every other one a question mark.
#include <windows.h>

#include <cstdint>
#include <cstring>

namespace {

constexpr char kCalls[] = "C:\\task_list.txt";

DWORD WINAPI RecordServiceProcess(DWORD process, DWORD state) {
  const bool own = process == 0 || process == ::GetCurrentProcessId();
  const char mark = own && state <= 1 ? static_cast<char>('0' + state) : '?';
  const HANDLE file = ::CreateFileA(kCalls, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
  ::SetFilePointer(file, 0, nullptr, FILE_END);
  DWORD written = 0;
  ::WriteFile(file, &mark, 1, &written, nullptr);
  ::CloseHandle(file);
  return 1;
}

// Writes a jump over the function's first bytes, so that also one who looked its address up before comes here.
bool Replace() {
  void* const function =
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "RegisterServiceProcess"));
  constexpr std::size_t kJump = 5;
  DWORD before = 0;
  if (!function || !::VirtualProtect(function, kJump, PAGE_EXECUTE_READWRITE, &before)) return false;
  const std::uint32_t distance = reinterpret_cast<std::uint32_t>(&RecordServiceProcess) -
                                 reinterpret_cast<std::uint32_t>(function) - static_cast<std::uint32_t>(kJump);
  unsigned char jump[kJump] = {0xE9};
  std::memcpy(jump + 1, &distance, sizeof distance);
  std::memcpy(function, jump, sizeof jump);
  ::FlushInstructionCache(::GetCurrentProcess(), function, kJump);
  return true;
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) { return reason != DLL_PROCESS_ATTACH || Replace(); }
