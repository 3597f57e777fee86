// Keeps a file open, shared with nobody, until it is ended; makes the file C:\held once it does.
//
//   hold_file.exe FILE
#include <windows.h>

namespace {

HANDLE open(const char* path, DWORD disposition) {
  return ::CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition, 0, nullptr);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2 || open(arguments[1], OPEN_EXISTING) == INVALID_HANDLE_VALUE) return 1;
  ::CloseHandle(open("C:\\held", CREATE_ALWAYS));
  ::Sleep(INFINITE);
}
