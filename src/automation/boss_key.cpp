#include "automation/boss_key.h"

namespace {
constexpr std::int32_t kFirstCode = 112;
constexpr std::int32_t kLastCode = 123;
}  // namespace

std::string BossKeyName(std::int32_t code) {
  if (code < kFirstCode || code > kLastCode) return "F10";
  return "F" + std::to_string(code - kFirstCode + 1);
}
