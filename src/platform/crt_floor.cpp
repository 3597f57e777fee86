// Keeps three wide functions out of the import table.
//
// The compiler's static runtime refers to CreateSemaphoreW, GetModuleHandleW and LoadLibraryW, which Windows 9x only has
// as stubs that fail. Defining the import pointers here lets the linker take these instead. The runtime passes no name to
// the first and only plain ASCII names to the others.
#include <iterator>

#include "platform/win32.h"

namespace {

const char* AsciiName(const wchar_t* wide, char (&name)[MAX_PATH]) {
  if (wide == nullptr) return nullptr;
  std::size_t at = 0;
  for (; wide[at] != L'\0' && at + 1 < std::size(name); ++at) name[at] = static_cast<char>(wide[at]);
  name[at] = '\0';
  return name;
}

HANDLE WINAPI CreateSemaphoreByAnsi(LPSECURITY_ATTRIBUTES security, LONG initial, LONG maximum, LPCWSTR name) {
  char ansi[MAX_PATH];
  return ::CreateSemaphoreA(security, initial, maximum, AsciiName(name, ansi));
}

HMODULE WINAPI GetModuleHandleByAnsi(LPCWSTR name) {
  char ansi[MAX_PATH];
  return ::GetModuleHandleA(AsciiName(name, ansi));
}

HMODULE WINAPI LoadLibraryByAnsi(LPCWSTR name) {
  char ansi[MAX_PATH];
  return ::LoadLibraryA(AsciiName(name, ansi));
}

}  // namespace

// The decorated names of the import pointers: "__imp__", the function, "@" and the bytes of its arguments.
extern "C" {
extern const void* const importCreateSemaphoreW __asm__("__imp__CreateSemaphoreW@16");
extern const void* const importGetModuleHandleW __asm__("__imp__GetModuleHandleW@4");
extern const void* const importLoadLibraryW __asm__("__imp__LoadLibraryW@4");
const void* const importCreateSemaphoreW = reinterpret_cast<const void*>(&CreateSemaphoreByAnsi);
const void* const importGetModuleHandleW = reinterpret_cast<const void*>(&GetModuleHandleByAnsi);
const void* const importLoadLibraryW = reinterpret_cast<const void*>(&LoadLibraryByAnsi);
}
