// The bytes of a fuzzer as a wide text: ASCII as it is, so that a dictionary's words are found in it, and every 16-bit unit,
// half surrogate pairs among them, as the byte 0xFF and the two of the unit. The other bytes are letters beyond ASCII.
#pragma once

#include <cstddef>
#include <string>

#include "platform/wide_text.h"

inline platform::WideText WideInput(const unsigned char* data, std::size_t size) {
  platform::WideText text;
  for (std::size_t at = 0; at < size; ++at) {
    if (data[at] == 0xFF && at + 2 < size) {
      text += static_cast<platform::WideChar>(data[at + 1] << 8 | data[at + 2]);
      at += 2;
    } else {
      text += static_cast<platform::WideChar>(data[at] < 0x80 ? data[at] : 0x300 + data[at]);
    }
  }
  return text;
}

// For a property's message.
inline std::string Readable(platform::WideView text) {
  std::string readable;
  for (const platform::WideChar character : text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    if (character >= 0x20 && character < 0x7F) {
      readable += static_cast<char>(character);
    } else {
      readable += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) readable += kDigits[character >> shift & 0xF];
    }
  }
  return readable;
}
