// Where a program of ours begins, instead of in the compiler's start-up code. That one holds instructions that a 486 lacks,
// reads a command line that nobody asks it for, and sets up a console, signals and threads that nobody uses.
//
// What is left to do before WinMain: seed the check of the stack, name the tables in which exceptions find their handlers,
// and make the static objects. `exit` destroys them. Linked first, without link-time optimisation.
#include <cstdint>
#include <cstdlib>

#include "platform/win32.h"

extern "C" {
void WinMainCRTStartup();

// The unwinder keeps the record, six words of its own, and reads the tables at the first exception.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the unwinder's own name
void __register_frame_info(const void* tables, void* record);

// What a function finds changed below its return address when one of its buffers was written over its end, and what it calls
// then. The compiler's own ones take the number from a library that the floor systems lack.
// NOLINTBEGIN(bugprone-reserved-identifier): the compiler's own names
std::uintptr_t __stack_chk_guard = 0xFF0A0D00;
[[noreturn]] void __stack_chk_fail();
// NOLINTEND(bugprone-reserved-identifier)

// Made by the linker: -1, then the functions that make the static objects, the last one to be called first, then null.
using Constructor = void (*)();
extern const Constructor constructors[] __asm__("___CTOR_LIST__");
}

namespace {

// Nothing, at the beginning of all unwind tables, since this file is the first; unwind_tables_end.cpp holds their end.
__extension__ __attribute__((section(".eh_frame"), used)) const char unwindTables[0] = {};

void* unwindRecord[8];

void MakeStaticObjects() {
  const Constructor* last = constructors + 1;
  while (*last != nullptr) ++last;
  while (--last != constructors) (*last)();
}

// A number that nobody outside knows; its NUL byte ends every text that is copied over it.
void SeedStackGuard() {
  std::uint32_t seed = ::GetTickCount() ^ (::GetCurrentProcessId() << 16) ^ reinterpret_cast<std::uintptr_t>(&seed);
  seed = (seed ^ seed >> 15) * 0x2C1B3C6D;
  __stack_chk_guard ^= (seed ^ seed >> 12) << 8;
}

}  // namespace

// For the destructors of static objects; the system's C library has it under another name.
int atexit(void (*destroy)()) { return _onexit(reinterpret_cast<_onexit_t>(destroy)) != nullptr ? 0 : -1; }

// The end of a program whose unwind tables are broken; the C library's own would show a message.
void abort() { ::ExitProcess(3); }

// Nothing on the stack can be trusted any more.
void __stack_chk_fail() { ::ExitProcess(3); }

// It has no check of its own, which would find the number changed by its first statement.
__attribute__((no_stack_protector)) void WinMainCRTStartup() {
  SeedStackGuard();
  __register_frame_info(unwindTables, unwindRecord);
  MakeStaticObjects();
  char noCommandLine[] = "";
  std::exit(WinMain(::GetModuleHandleA(nullptr), nullptr, noCommandLine, SW_SHOWDEFAULT));
}
