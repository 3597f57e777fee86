// Memory that the program gives back is overwritten first: names of what was erased pass through it, and nobody is to find
// them there afterwards.
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <new>

#include "platform/tally.h"

// Not put in the place of each call: there are hundreds.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  if (memory != nullptr) platform::OverwriteMemory(memory, _msize(memory));
  std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
