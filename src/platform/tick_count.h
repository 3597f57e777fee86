// Arithmetic on the millisecond tick count, which starts again at 0 every 49.7 days.
#pragma once

#include <cstdint>

namespace platform {

// Milliseconds from `now` to `end`, 0 or less once it is reached; right across the wrap for spans below 24 days.
inline std::int32_t MillisecondsUntil(std::uint32_t end, std::uint32_t now) { return static_cast<std::int32_t>(end - now); }

}  // namespace platform
