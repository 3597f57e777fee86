#include "automation/boss_key.h"

#include "platform/plain_text.h"

namespace automation {
using namespace platform;

namespace {
constexpr std::int32_t kFirstCode = 112;
constexpr std::int32_t kF10Code = 121;
constexpr std::int32_t kLastCode = 123;
}  // namespace

std::string BossKeyName(std::int32_t code) {
  if (code < kFirstCode || code > kLastCode) return "F10";
  return "F" + std::to_string(code - kFirstCode + 1);
}

std::int32_t BossKeyCodeOf(std::string_view name) {
  const std::string trimmed = Trim(name);
  for (std::int32_t code = kFirstCode; code <= kLastCode; ++code)
    if (trimmed == BossKeyName(code)) return code;
  return kF10Code;
}

}  // namespace automation
