#include "settings/settings_store.h"

#include <optional>

#include "platform/Reg32.h"
#include "platform/app_title.h"
#include "platform/handles.h"
#include "platform/plain_key.h"
#include "platform/product.h"
#include "platform/system_error.h"
#include "platform/wide_text.h"

namespace settings {
using namespace platform;

namespace {

std::string KeyPath(const char* section) { return "Software\\" QUELLIX_PRODUCT_NAME "\\" + AppTitle + "\\" + section; }

void RaiseUnlessSuccess(LONG status) {
  if (status != ERROR_SUCCESS) RaiseSystemError(static_cast<unsigned long>(status));
}

}  // namespace

std::string GetSetting(const char* section, const char* key, const char* defaultText) {
  return TextValue(HKEY_CURRENT_USER, KeyPath(section), key).value_or(defaultText);
}

std::string GetItemFlag(const char* key) {
  const bool missing = IsValueMissing(HKEY_CURRENT_USER, KeyPath(kItemSection), key);
  return GetSetting(kItemSection, key, missing ? kItemDefault : "0");
}

std::string GetSetting(Setting setting) {
  const SettingRow& row = SchemaRow(setting);
  return GetSetting(row.section, row.key, row.defaultText);
}

void SaveSetting(const char* section, const char* key, const std::string& value) {
  UniqueKey opened;
  RaiseUnlessSuccess(MakePlainKey(HKEY_CURRENT_USER, KeyPath(section), KEY_SET_VALUE, opened));
  RaiseUnlessSuccess(::RegSetValueExA(opened.get(), key, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                      static_cast<DWORD>(value.size()) + 1));
}

void SaveSetting(Setting setting, const std::string& value) {
  const SettingRow& row = SchemaRow(setting);
  SaveSetting(row.section, row.key, value);
}

}  // namespace settings
