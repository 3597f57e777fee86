#include "settings/settings_store.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Reg32.h"
#include "platform/app_title.h"
#include "platform/handles.h"
#include "platform/plain_key.h"
#include "platform/product.h"
#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/wide_text.h"

namespace settings {
using namespace platform;

namespace {

std::string KeyPath(const char* section) { return "Software\\" QUELLIX_PRODUCT_NAME "\\" + AppTitle + "\\" + section; }

void RaiseUnlessSuccess(LONG status) {
  if (status != ERROR_SUCCESS) RaiseSystemError(static_cast<unsigned long>(status));
}

// A value that is there and could not be read, and the text that was given out instead: saving that text is nobody's choice
// and would overwrite the value.
struct Unread {
  std::string section, key, text;

  bool IsOf(const char* otherSection, const char* otherKey) const { return section == otherSection && key == otherKey; }
};
std::vector<Unread> unread;

void Forget(const char* section, const char* key) {
  std::erase_if(unread, [&](const Unread& value) { return value.IsOf(section, key); });
}

bool IsGivenOutForUnread(const char* section, const char* key, const std::string& text) {
  return std::any_of(unread.begin(), unread.end(),
                     [&](const Unread& value) { return value.IsOf(section, key) && value.text == text; });
}

}  // namespace

std::string GetSetting(const char* section, const char* key, const char* defaultText) {
  Forget(section, key);
  std::optional<std::string> text;
  bool nothing = false;
  quietly([&] {
    text = TextValue(HKEY_CURRENT_USER, KeyPath(section), key);
    nothing = !text && HoldsNoText(HKEY_CURRENT_USER, KeyPath(section), key);
  });
  if (!text && !nothing) unread.push_back({section, key, defaultText});
  return text.value_or(defaultText);
}

std::string GetItemFlag(const char* key) {
  const bool missing = valueOr(false, [key] { return IsValueMissing(HKEY_CURRENT_USER, KeyPath(kItemSection), key); });
  return GetSetting(kItemSection, key, missing ? kItemDefault : "0");
}

std::string GetSetting(Setting setting) {
  const SettingRow& row = SchemaRow(setting);
  return GetSetting(row.section, row.key, row.defaultText);
}

void SaveSetting(const char* section, const char* key, const std::string& value) {
  if (IsGivenOutForUnread(section, key, value)) return;
  UniqueKey opened;
  RaiseUnlessSuccess(MakePlainKey(HKEY_CURRENT_USER, KeyPath(section), KEY_SET_VALUE, opened));
  RaiseUnlessSuccess(::RegSetValueExA(opened.get(), key, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                      static_cast<DWORD>(value.size()) + 1));
  Forget(section, key);
}

void SaveSetting(Setting setting, const std::string& value) {
  const SettingRow& row = SchemaRow(setting);
  SaveSetting(row.section, row.key, value);
}

}  // namespace settings
