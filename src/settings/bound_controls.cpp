#include "settings/bound_controls.h"

#include "platform/text_value.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"

namespace settings {
using namespace platform;

std::string ValueText(const CheckBox& box) { return box.Value() == 1 ? "1" : "0"; }

void SettingCheckBox::Load() {
  const bool hasVariable = SchemaRow(setting_).readBy != ReadBy::EraseSettings;
  SetValue(NumberOf(hasVariable ? Settings[setting_] : GetSetting(setting_)));
}

void SettingCheckBox::Keep() { Settings[setting_] = ValueText(*this); }

void SettingTextBox::Load() {
  loaded_ = TextOf(NumberOf(GetSetting(setting_)));
  SetText(loaded_);
}

void SettingTextBox::Keep() { Settings[setting_] = ShowsItsText() || IsModified() ? Text() : loaded_; }

}  // namespace settings
