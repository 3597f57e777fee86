// Memory that runs short while a run is tallied: names are lost, and nothing else.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "platform/tally.h"

using namespace platform;

namespace {
bool noMemoryIsLeft = false;
}

[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const memory = noMemoryIsLeft ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

TEST(ATallyWithoutMemory, GoesOnWithoutNames) {
  Tally tally;
  const ListeningScope scope(tally);
  tally.AddLine();
  const WideText name(400, L'n');
  noMemoryIsLeft = true;
  TellErasedWith(Trace::File, 30);
  TellErased(Trace::File, 3 - 1);
  TellStayed(name, Why::InUse);
  noMemoryIsLeft = false;
  EXPECT_EQ(tally.Sum({0, 1}).erased[0], 3);
  EXPECT_EQ(tally.Sum({0, 1}).stayed, 1);
  EXPECT_EQ(tally.Sum({0, 1}).named, 0);
  TellStayed(name, Why::InUse);
  EXPECT_EQ(tally.Sum({0, 1}).named, 1);
}
