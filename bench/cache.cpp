// Times the program's walk over the URL cache beside a bare loop that finds and deletes, on equal caches, in one process and
// in turn.
//
// usage: bench_cache ENTRIES PAIRS
// Prints a line "product<TAB>baseline" in milliseconds for each pair.
#include <cstdio>
#include <cstdlib>

#include "cache_entries.h"
#include "cleaners/cache_walks.h"
#include "pairs.h"

using namespace cleaners;
using namespace platform;

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
double OnACache(int entries, Work work) {
  FillTheCache(entries);
  const double milliseconds = Milliseconds(work);
  if (!CachedUrls().empty()) {
    std::fprintf(stderr, "the cache is not empty after the work\n");
    std::exit(1);
  }
  return milliseconds;
}

double Product(int entries) {
  return OnACache(entries, [] { ClearUrlCache(); });
}

double Baseline(int entries) { return OnACache(entries, &BareLoop); }

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const int entries = std::atoi(arguments[1]);
  EmptyTheCache();
  RunPairs(
      std::atoi(arguments[2]), [&] { return Product(entries); }, [&] { return Baseline(entries); });
  return 0;
}
