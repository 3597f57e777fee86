// The way of a call: the program calls a stub of ten bytes, which names its function and jumps to the one piece of code
// below; that hands the arguments over as an array and afterwards takes as many of them off the stack as the function would.
#include <cstring>
#include <new>

#include "standin.h"

extern "C" {
std::uint64_t StandinDispatch(Function* function, std::uint32_t* arguments) { return Call(*function, arguments).Run(); }
void StandinEntry();
}

__asm__(R"(
	.globl _StandinEntry
_StandinEntry:                     # eax: the function; the stack: return address, arguments
	pushl %eax
	leal 8(%esp), %edx
	pushl %edx
	pushl %eax
	call _StandinDispatch      # edx:eax is the result
	addl $8, %esp
	popl %ecx
	movl (%ecx), %ecx          # how many bytes go
	pushl %eax
	movl 4(%esp), %eax
	movl %eax, 4(%esp,%ecx)    # the return address, below what stays
	popl %eax
	addl %ecx, %esp
	ret
)");

std::uint64_t StandinCall(void* function, const std::uint32_t* arguments, std::size_t count) {
  std::uint64_t result;
  __asm__ volatile(R"(
	movl %%esp, %%ebx
1:	jecxz 2f
	pushl -4(%%edx,%%ecx,4)
	decl %%ecx
	jmp 1b
2:	call *%%eax
	movl %%ebx, %%esp              # whoever takes the arguments away
)"
                   : "=A"(result), "+c"(count)
                   : "a"(function), "d"(arguments)
                   : "ebx", "memory", "cc");
  return result;
}

void* MakeStub(Function& function) {
  constexpr std::size_t kStub = 10, kRoom = 1 << 16;
  static auto* const memory =
      static_cast<unsigned char*>(::VirtualAlloc(nullptr, kRoom, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
  static std::size_t used = 0;
  if (memory == nullptr || used + kStub > kRoom) throw std::bad_alloc();
  unsigned char* const code = memory + used;
  used += kStub;
  const auto number = reinterpret_cast<std::uintptr_t>(&function);
  const auto distance = reinterpret_cast<std::uintptr_t>(&StandinEntry) - reinterpret_cast<std::uintptr_t>(code + kStub);
  code[0] = 0xB8;  // mov eax, function
  std::memcpy(code + 1, &number, sizeof number);
  code[5] = 0xE9;  // jmp StandinEntry
  std::memcpy(code + 6, &distance, sizeof distance);
  return code;
}
