// What the benchmarks share: files, a bare walk, the clock, and runs in turn.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>

#include "platform/tally.h"
#include "platform/win32.h"

using namespace platform;

constexpr int kBranchDepth = 11;  // folders, each in the one before

inline void MakeFile(const std::string& path) {
  const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  ::WriteFile(file, "trace", 5, &written, nullptr);
  ::CloseHandle(file);
}

template <class Work>
double Milliseconds(Work work) {
  LARGE_INTEGER frequency, before, after;
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&before);
  work();
  ::QueryPerformanceCounter(&after);
  return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The bare loop over everything below a folder, from the inside out. Both are told the path and the name.
template <class AtFile, class AtFolder>
void Walk(const std::string& folder, AtFile atFile, AtFolder atFolder) {
  WIN32_FIND_DATAA found;
  const HANDLE find = ::FindFirstFileA((folder + "\\*").c_str(), &found);
  if (find == INVALID_HANDLE_VALUE) return;
  do {
    if (std::strcmp(found.cFileName, ".") == 0 || std::strcmp(found.cFileName, "..") == 0) continue;
    const std::string path = folder + "\\" + found.cFileName;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      atFile(path, found.cFileName);
    } else {
      Walk(path, atFile, atFolder);
      atFolder(path, found.cFileName);
    }
  } while (::FindNextFileA(find, &found));
  ::FindClose(find);
}

// Deletes what is in a folder with nothing but the system's three functions.
inline void BareEmpty(const std::string& folder) {
  Walk(
      folder, [](const std::string& path, const char*) { ::DeleteFileA(path.c_str()); },
      [](const std::string& path, const char*) { ::RemoveDirectoryA(path.c_str()); });
}

// Prints a line "product<TAB>baseline" for each pair. In turn, and each goes first every other time. What the product does
// is tallied, as in a run.
template <class Product, class Baseline>
void RunPairs(int pairs, Product product, Baseline baseline) {
  const auto tallied = [&product] {
    static Tally tally;
    const ListeningScope listening(tally);
    tally.Clear();
    tally.AddLine();
    return product();
  };
  for (int pair = 0; pair < pairs; ++pair) {
    double ours = 0, theirs = 0;
    if (pair % 2 == 0) ours = tallied();
    theirs = baseline();
    if (pair % 2 == 1) ours = tallied();
    std::printf("%.3f\t%.3f\n", ours, theirs);
    std::fflush(stdout);
  }
}
