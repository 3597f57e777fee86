#include "settings/settings_store.h"

#include "platform/Reg32.h"
#include "platform/app_title.h"
#include "platform/handles.h"
#include "platform/system_error.h"

namespace settings {
using namespace platform;

namespace {

std::string KeyPath(const SettingRow& row) { return "Software\\" QUELLIX_PRODUCT_NAME "\\" + AppTitle + "\\" + row.section; }

}  // namespace

std::string GetSetting(Setting setting) {
  const SettingRow& row = SchemaRow(setting);
  return TextValue(HKEY_CURRENT_USER, KeyPath(row), row.key).value_or(row.defaultText);
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

}  // namespace settings
