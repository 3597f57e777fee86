// Times the shredding of files beside a bare loop that writes the same bytes to the disk and deletes, on equal files, in one
// process and in turn.
//
// usage: bench_shred FILES LEVEL PAIRS ROW
//   ROW "engine" (DeleteFileShred, against open, one WriteFile, flush, close, delete), "run" (a shred run, which first opens
//   the file for reading and looks for attributes to clear, against a loop that does so too), "run-bare" (a shred run
//   against the loop of "engine"), "items" (as "run", the loop with one WriteFile for each item of the overwrite sequence)
//   or "locked" (a shred run over files held against writing, each of whose items fails and is reported, against one over
//   others)
// The files of 4 KB are made in C:\work. Prints a line "product<TAB>baseline" in milliseconds for each pair.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "connection.h"
#include "pairs.h"
#include "platform/handles.h"
#include "platform/wide_system.h"
#include "shred/modShred.h"
#include "shred/overwrite_sequence.h"

using namespace platform;
using namespace shred;

namespace {

constexpr std::size_t kFileBytes = 4096;

std::vector<std::string> MakeFiles(int count) {
  const std::string content(kFileBytes, 'x');
  std::vector<std::string> paths;
  for (int number = 0; number < count; ++number) {
    paths.push_back("C:\\work\\file" + std::to_string(number) + ".txt");
    const HANDLE file = ::CreateFileA(paths.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    ::CloseHandle(file);
  }
  return paths;
}

std::vector<std::string> Items(const char* level) {
  std::vector<std::string> items;
  for (const OverwriteRun& run : OverwriteSequence(RepeatCount(level)))
    for (int written = 0; written < run.count; ++written) items.emplace_back(run.item);
  return items;
}

// What a file is overwritten with: each element by a WriteFile of its own.
std::vector<std::string> Writes(const char* level, bool inOneBlock) {
  const std::vector<std::string> items = Items(level);
  if (!inOneBlock) return items;
  std::string block;
  for (const std::string& item : items) block += item;
  return {block};
}

void BareLoop(const std::vector<std::string>& paths, const std::vector<std::string>& writes, bool allSteps) {
  constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;
  constexpr DWORD kCleared = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  for (const std::string& path : paths) {
    if (allSteps) {
      ::CloseHandle(::CreateFileA(path.c_str(), GENERIC_READ, kShared, nullptr, OPEN_EXISTING, 0, nullptr));
      if ((::GetFileAttributesA(path.c_str()) & kCleared) != 0) ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD written = 0;
    for (const std::string& bytes : writes)
      ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::FlushFileBuffers(file);
    ::CloseHandle(file);
    ::DeleteFileA(path.c_str());
  }
}

template <class Work>
double OnFiles(int count, Work work) {
  const std::vector<std::string> paths = MakeFiles(count);
  const double milliseconds = Milliseconds([&] { work(paths); });
  for (const std::string& path : paths) {
    if (::GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES) continue;
    std::fprintf(stderr, "%s is still there\n", path.c_str());
    std::exit(1);
  }
  return milliseconds;
}

double Product(int count, const char* level, bool allSteps) {
  return OnFiles(count, [&](const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
      allSteps ? ShredFile(FullPath(Widen(path)), level) : DeleteFileShred(FullPath(Widen(path)), level);
  });
}

double Locked(int count, const char* level) {
  GoOffline();
  const std::vector<std::string> paths = MakeFiles(count);
  std::vector<UniqueFile> holders;
  for (const std::string& path : paths)
    holders.emplace_back(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  const double milliseconds = Milliseconds([&] {
    for (const std::string& path : paths) ShredFile(FullPath(Widen(path)), level);
  });
  holders.clear();
  for (const std::string& path : paths) ::DeleteFileA(path.c_str());
  return milliseconds;
}

double Baseline(int count, const std::vector<std::string>& writes, bool allSteps) {
  return OnFiles(count, [&](const std::vector<std::string>& paths) { BareLoop(paths, writes, allSteps); });
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 5) return 2;
  const int files = std::atoi(arguments[1]);
  const char* const level = arguments[2];
  const std::string which = arguments[4];
  if (which == "locked") {
    RunPairs(
        std::atoi(arguments[3]), [&] { return Locked(files, level); }, [&] { return Product(files, level, true); });
    return 0;
  }
  const std::vector<std::string> writes = Writes(level, which != "items");
  RunPairs(
      std::atoi(arguments[3]), [&] { return Product(files, level, which != "engine"); },
      [&] { return Baseline(files, writes, which == "run" || which == "items"); });
  return 0;
}
