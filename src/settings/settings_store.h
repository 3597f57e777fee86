// The per-user settings store: texts addressed by application name, section and key.
//
// HKEY_CURRENT_USER\Software\Quellix\<application title>\<section>, one REG_SZ value per key. The application name is
// AppTitle as it is at the moment of the call.
#pragma once

#include <string>

#include "settings/schema.h"

namespace settings {

// The stored text up to its first NUL; the default when key or value is missing, not a text, or cannot be read. Section, key
// and default are parts of tables: they are kept by address.
std::string GetSetting(Setting setting);
std::string GetSetting(const char* section, const char* key, const char* defaultText);

// The flag of an erase item: its default only when it is missing. One that is no text, or cannot be read, selects nothing.
std::string GetItemFlag(const char* key);

// Raises the system's error when the value cannot be written, also where a registry link leads elsewhere; what was stored
// before is then unchanged.
void SaveSetting(Setting setting, const std::string& value);
void SaveSetting(const char* section, const char* key, const std::string& value);

}  // namespace settings
