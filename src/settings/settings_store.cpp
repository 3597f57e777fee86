#include "settings/settings_store.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

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
// and would overwrite the value. All three are parts of tables. The list takes no memory, which may be what was lacking.
struct Unread {
  const char *section, *key, *text;

  bool IsOf(const char* otherSection, const char* otherKey) const {
    return std::strcmp(section, otherSection) == 0 && std::strcmp(key, otherKey) == 0;
  }
};
constexpr std::size_t kMost = 256;  // more than there are settings
Unread unread[kMost];
std::size_t unreadCount = 0;

void Forget(const char* section, const char* key) {
  Unread* const end = unread + unreadCount;
  unreadCount = static_cast<std::size_t>(
      std::remove_if(unread, end, [&](const Unread& value) { return value.IsOf(section, key); }) - unread);
}

bool IsGivenOutForUnread(const char* section, const char* key, const std::string& text) {
  return std::any_of(unread, unread + unreadCount,
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
  if (!text && !nothing && unreadCount < kMost) unread[unreadCount++] = {section, key, defaultText};
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
