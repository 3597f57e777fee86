// Between the boss key's virtual-key code (VK_F1 112 to VK_F12 123) and the name that the user chooses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace automation {

// "F1" to "F12"; "F10" for any other code, although such a code is the one that is polled.
std::string BossKeyName(std::int32_t code);

// The code of "F1" to "F12", blanks around it aside; that of F10 for any other text, so that there always is a boss key.
std::int32_t BossKeyCodeOf(std::string_view name);

}  // namespace automation
