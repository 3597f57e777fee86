// The overwrite sequence, written down a second time: by bytes, in the order of the file.
#pragma once

#include <string>

inline std::string Times(int count, const std::string& item) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += item;
  return bytes;
}

inline std::string ExpectedOverwrite(int n) {
  const std::string ten("\x0A\x00\x00\x00", 4);
  std::string bytes = Times(n, ten) + Times(n, "\xEA\xDE") + Times(n, "\x31\xE7");
  for (int run = 4; run <= 13; ++run) bytes += Times(n, "\x31\x30");
  for (const char item : {'\x2E', '\x2E', '\x56', '\x65', '\x72', '\x97', '\x31', '\x2E', '\x30', '\x2E', '\x30'})
    bytes += Times(n, std::string(1, item));
  for (int run = 25; run <= 27; ++run) bytes += Times(n, ten);
  return bytes + Times(10, ten) + Times(100, ten) + Times(n, std::string(1, '\0'));
}
