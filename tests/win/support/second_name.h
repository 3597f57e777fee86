// A second name of a file: what it shows after the first is deleted was written before the deletion.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/late_binding.h"

using namespace platform;

inline void GiveSecondName(const std::string& path, const std::string& second) {
  const LateFunction<BOOL(WINAPI*)(LPCSTR, LPCSTR, SECURITY_ATTRIBUTES*)> link{"kernel32.dll", "CreateHardLinkA"};
  EXPECT_TRUE(link(second.c_str(), path.c_str(), nullptr)) << path;
}

// Two blocks of one digit each in turn, then what is left over.
inline bool IsOverwritten(const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const std::size_t block = at / 1024;
    const bool isRest = (block + 1) * 1024 > bytes.size();
    const char expected = isRest || block % 2 == 0 ? bytes[0] : bytes[1024];
    if (bytes[at] != expected || bytes[at] < '0' || bytes[at] > '9') return false;
  }
  return true;
}
