// Tells what the heaps of the process that it is loaded into hold: C:\heaps.txt has a line for each heap, with the number
// of its used blocks and their bytes. It does not stay loaded, so that it can be loaded again.
#include <windows.h>

#include <cstdio>

namespace {

void Tell(HANDLE heap, std::FILE* file) {
  unsigned long blocks = 0, bytes = 0;
  PROCESS_HEAP_ENTRY entry{};
  ::HeapLock(heap);
  while (::HeapWalk(heap, &entry)) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
    ++blocks;
    bytes += entry.cbData;
  }
  ::HeapUnlock(heap);
  std::fprintf(file, "%lu %lu\n", blocks, bytes);
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  constexpr DWORD kMost = 64;
  HANDLE heaps[kMost];
  std::FILE* const file = reason == DLL_PROCESS_ATTACH ? std::fopen("C:\\heaps.txt", "w") : nullptr;
  if (file == nullptr) return FALSE;
  const DWORD count = ::GetProcessHeaps(kMost, heaps);
  for (DWORD i = 0; i < count && i < kMost; ++i) Tell(heaps[i], file);
  std::fclose(file);
  return FALSE;
}
