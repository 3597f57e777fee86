// A colour that can be read on a ground, in every scheme.
#pragma once

#include <cstdint>

namespace app {

// How bright the eye finds a colour, as the system writes it (red in the lowest byte): 0 to 255.
constexpr int Brightness(std::uint32_t colour) {
  const int red = static_cast<int>(colour & 0xFF);
  const int green = static_cast<int>(colour >> 8 & 0xFF);
  const int blue = static_cast<int>(colour >> 16 & 0xFF);
  return (299 * red + 587 * green + 114 * blue) / 1000;
}

// The wanted colour where it can be made out on the ground, otherwise the scheme's own colour for texts there.
constexpr std::uint32_t ReadableOn(std::uint32_t ground, std::uint32_t wanted, std::uint32_t text) {
  constexpr int kEnough = 64;
  const int difference = Brightness(ground) - Brightness(wanted);
  return difference >= kEnough || -difference >= kEnough ? wanted : text;
}

}  // namespace app
