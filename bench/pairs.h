// What the benchmarks of folder walks share: files, the clock, and runs in turn.
#pragma once

#include <cstdio>
#include <string>

#include "platform/win32.h"

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

// Prints a line "product<TAB>baseline" for each pair. In turn, and each goes first every other time.
template <class Product, class Baseline>
void RunPairs(int pairs, Product product, Baseline baseline) {
  for (int pair = 0; pair < pairs; ++pair) {
    double ours = 0, theirs = 0;
    if (pair % 2 == 0) ours = product();
    theirs = baseline();
    if (pair % 2 == 1) ours = product();
    std::printf("%.3f\t%.3f\n", ours, theirs);
    std::fflush(stdout);
  }
}
