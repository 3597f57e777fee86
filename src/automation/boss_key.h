// Between the boss key's virtual-key code (VK_F1 112 to VK_F12 123) and the name that the user chooses.
#pragma once

#include <cstdint>
#include <string>

// "F1" to "F12"; "F10" for any other code, although such a code is the one that is polled.
std::string BossKeyName(std::int32_t code);
