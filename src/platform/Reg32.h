// A thin layer over the registry, and the name of the operating system. Texts are ANSI if not said otherwise; a root is a
// predefined key (HKEY_CURRENT_USER, ...). Failures go to the error reporter under "Reg32," and the procedure's name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/wide_text.h"
#include "platform/win32.h"

namespace platform {

// Opens the key, creating it when it is missing, and writes the value. Only the types 0 and 1 are written, as the text's
// bytes without a terminating zero; any other type writes nothing. Every value that the program keeps is such a text.
void SaveKeyValue(HKEY root, const std::string& subKey, const std::string& valueName, const std::string& value, DWORD type);

// Despite its name a number: the text value as a 32-bit integer. `defaultValue` for a missing value, one that is not a
// text, or (reported) a text that is not a number.
std::int32_t GetSettingString(HKEY root, const std::string& subKey, const std::string& valueName,
                              const std::int32_t& defaultValue = 0);

// The text value up to its first NUL; nothing when key or value is missing, cannot be read or is no text (REG_SZ). Reports
// nothing. The wide form is for what names a path.
std::optional<std::string> TextValue(HKEY root, const std::string& subKey, const std::string& valueName);
std::optional<WideText> TextValue(HKEY root, const WideText& subKey, const WideText& valueName);

// True when there is no such value, whatever its kind; false also when that cannot be found out.
bool IsValueMissing(HKEY root, const std::string& subKey, const std::string& valueName);

// The same for one that is there and is no text; false for one that cannot be looked at.
bool HoldsNoText(HKEY root, const std::string& subKey, const std::string& valueName);

// A missing key or value is no error.
void DeleteValue(HKEY root, const std::string& subKey, const std::string& valueName);

// The name of the running system (os_name.h); empty when the system does not tell its version.
std::string FindOS();

// Read, write, subkeys, notification and links (KEY_READ | KEY_WRITE | KEY_CREATE_LINK): every registry procedure asks
// for the same.
constexpr DWORD kRegistryAccess = 0x2003F;

}  // namespace platform
