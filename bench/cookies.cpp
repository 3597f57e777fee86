// Times a bare walk over the cookies of the URL cache that puts their names into a list box, for comparison.
//
// usage: bench_cookies TIMES
// Prints a line with the milliseconds of each walk; one before them, which loads what the system needs, is not counted.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "cache_entries.h"
#include "pairs.h"

namespace {

void Walk(HWND list) {
  std::vector<std::uint64_t> block(0x4000);
  const auto room = static_cast<DWORD>(block.size() * sizeof block[0]);
  const auto* const entry = reinterpret_cast<const INTERNET_CACHE_ENTRY_INFOA*>(block.data());
  DWORD size = room;
  const HANDLE find = cache::FindFirst("Cookie:", block.data(), &size);
  for (bool more = find != nullptr; more; more = cache::FindNext(find, block.data(), &size) != 0) {
    const char* const name = entry->lpszLocalFileName == nullptr ? nullptr : std::strrchr(entry->lpszLocalFileName, '\\');
    if (name != nullptr) ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name + 1));
    size = room;
  }
  cache::FindClose(find);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  const HWND parent = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  for (int time = 0; time <= std::atoi(arguments[1]); ++time) {
    const HWND list = ::CreateWindowExA(0, "LISTBOX", "", WS_CHILD, 0, 0, 9, 9, parent, nullptr, nullptr, nullptr);
    const double milliseconds = Milliseconds([list] { Walk(list); });
    if (time > 0) std::printf("%.3f\n", milliseconds);
    ::DestroyWindow(list);
  }
  return 0;
}
