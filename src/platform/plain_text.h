// Texts as texts: blanks and case. Single-byte, whatever the code page.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Without the blanks (0x20) at both ends; other white space stays.
std::string Trim(std::string_view text);

// A to Z only; every other byte stays as it is.
std::string UpperCase(std::string_view text);
bool EqualIgnoringCase(std::string_view one, std::string_view other);

}  // namespace platform
