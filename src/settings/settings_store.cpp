#include "settings/settings_store.h"

#include "platform/app_title.h"
#include "platform/handles.h"
#include "platform/system_error.h"

namespace {

std::string KeyPath(const SettingRow& row) { return "Software\\" QUELLIX_PRODUCT_NAME "\\" + AppTitle + "\\" + row.section; }

}  // namespace

std::string GetSetting(Setting setting) {
  const SettingRow& row = SchemaRow(setting);
  HKEY opened = nullptr;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, KeyPath(row).c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
    return row.defaultText;
  const UniqueKey key(opened);
  DWORD type = 0;
  DWORD size = 0;
  if (::RegQueryValueExA(key.get(), row.key, nullptr, &type, nullptr, &size) != ERROR_SUCCESS || type != REG_SZ)
    return row.defaultText;
  std::string text(size, '\0');
  if (::RegQueryValueExA(key.get(), row.key, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS ||
      type != REG_SZ)
    return row.defaultText;
  text.resize(size);
  return text.substr(0, text.find('\0'));
}

void SaveSetting(Setting setting, const std::string& value) {
  const SettingRow& row = SchemaRow(setting);
  HKEY opened = nullptr;
  char noClass[] = "";
  LONG status =
      ::RegCreateKeyExA(HKEY_CURRENT_USER, KeyPath(row).c_str(), 0, noClass, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
  if (status != ERROR_SUCCESS) RaiseSystemError(static_cast<unsigned long>(status));
  const UniqueKey key(opened);
  status = ::RegSetValueExA(key.get(), row.key, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                            static_cast<DWORD>(value.size()) + 1);
  if (status != ERROR_SUCCESS) RaiseSystemError(static_cast<unsigned long>(status));
}
