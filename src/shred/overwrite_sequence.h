// The bytes that a shredded file is overwritten with. They are not sized to the file: their number, 52 times the repeat
// count and 440 more, depends on the security level alone, and what a longer file holds after them stays: the time that a
// file takes depends on the level and not on its size.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace shred {

// One item, written `count` times in succession; a count below 1 writes nothing.
struct OverwriteRun {
  std::string_view item;
  int count;
};
using OverwriteRuns = std::array<OverwriteRun, 30>;

// Ten times the security level, halves to the even neighbour: 10 for level "1", 2 for "0.25". Raises 13 for a text that is
// not a number and 6 where 16 bits do not hold the count.
std::int16_t RepeatCount(std::string_view levelText);

// In the order in which they are written from the first byte of the file on.
OverwriteRuns OverwriteSequence(std::int16_t repeatCount);

}  // namespace shred
