// A property that holds for every input. When it does not, the fuzzer ends with the property's words and keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>

#define PROPERTY(holds, ...)                                 \
  do {                                                       \
    if (!(holds)) {                                          \
      std::fprintf(stderr, "does not hold: %s\n  ", #holds); \
      std::fprintf(stderr, __VA_ARGS__);                     \
      std::fputc('\n', stderr);                              \
      std::abort();                                          \
    }                                                        \
  } while (false)
