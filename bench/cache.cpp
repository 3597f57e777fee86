// Times the program's walk over the URL cache beside a bare loop that finds and deletes, on equal caches, in one process and
// in turn.
//
// usage: bench_cache ENTRIES PAIRS
// Prints a line "product<TAB>baseline" in milliseconds for each pair.
#include <cstdio>
#include <cstdlib>

#include "cache_entries.h"
#include "cleaners/cache_walks.h"

namespace {

constexpr std::size_t kFileBytes = 200;

void FillTheCache(int entries) {
  for (int number = 0; number < entries; ++number) MakeContent("http://site/page" + std::to_string(number), kFileBytes);
}

void BareLoop() {
  std::vector<std::uint64_t> block(0x4000);
  const auto room = static_cast<DWORD>(block.size() * sizeof block[0]);
  const auto* const entry = reinterpret_cast<const INTERNET_CACHE_ENTRY_INFOA*>(block.data());
  DWORD size = room;
  const HANDLE find = cache::FindFirst(nullptr, block.data(), &size);
  for (bool more = find != nullptr; more; more = cache::FindNext(find, block.data(), &size) != 0) {
    cache::Delete(entry->lpszSourceUrlName);
    size = room;
  }
  cache::FindClose(find);
}

template <class Work>
double Milliseconds(int entries, Work work) {
  FillTheCache(entries);
  LARGE_INTEGER frequency, before, after;
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&before);
  work();
  ::QueryPerformanceCounter(&after);
  if (!CachedUrls().empty()) {
    std::fprintf(stderr, "the cache is not empty after the work\n");
    std::exit(1);
  }
  return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Product(int entries) {
  return Milliseconds(entries, [] { ClearUrlCache(); });
}

double Baseline(int entries) { return Milliseconds(entries, &BareLoop); }

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const int entries = std::atoi(arguments[1]);
  EmptyTheCache();
  for (int pair = 0; pair < std::atoi(arguments[2]); ++pair) {
    // In turn, and each goes first every other time.
    double product = 0;
    if (pair % 2 == 0) product = Product(entries);
    const double baseline = Baseline(entries);
    if (pair % 2 == 1) product = Product(entries);
    std::printf("%.3f\t%.3f\n", product, baseline);
    std::fflush(stdout);
  }
  return 0;
}
