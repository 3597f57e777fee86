// Memory that runs short while a run is tallied: names are lost, and nothing else.
#include <gtest/gtest.h>

#include <cstdlib>

#include "import_hook.h"
#include "platform/tally.h"

using namespace platform;

extern "C" {
extern decltype(&std::malloc) importedMalloc __asm__("__imp__malloc");
}

namespace {
void* NoMemory(std::size_t) { return nullptr; }
}  // namespace

TEST(ATallyWithoutMemory, GoesOnWithoutNames) {
  Tally tally;
  const ListeningScope scope(tally);
  tally.AddLine();
  const WideText one(400, L'1'), other(400, L'2');
  {
    const ImportHook hook(importedMalloc, &NoMemory);
    TellErasedWith(Trace::File, 30);
    TellErased(Trace::File, 2);
    TellStayed(one, Why::InUse);
  }
  EXPECT_EQ(tally.Sum({0, 1}).erased[0], 3);
  EXPECT_EQ(tally.Sum({0, 1}).stayed, 1);
  EXPECT_EQ(tally.Sum({0, 1}).named, 0);
  TellStayed(other, Why::InUse);
  EXPECT_EQ(tally.Sum({0, 1}).stayed, 2);
  EXPECT_EQ(tally.Sum({0, 1}).named, 1);
}
