// Controls that mirror a setting: `SettingCheckBox chkRbt{*this, IDC_chkRbt, Setting::chkRbt};` is all that a panel writes.
// A click keeps the settings variable equal to the box; loading and saving are one call each.
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/dialog.h"
#include "settings/schema.h"

namespace settings {

class SettingCheckBox : public platform::CheckBox {
 public:
  SettingCheckBox(platform::Dialog& dialog, int id, Setting setting) : CheckBox(dialog, id), setting_(setting) {}

  // Shows the number of the setting's text: of its variable, or of the store for one that only the control knows. Raises 380
  // for a number that no box shows, which then stays as it is.
  void Load();

  // The box's value into the variable.
  void Keep();

 private:
  void OnClick(int id) override {
    if (id == Id()) Keep();
  }

  Setting setting_;
};

class SettingTextBox : public platform::TextBox {
 public:
  SettingTextBox(platform::Dialog& dialog, int id, Setting setting) : TextBox(dialog, id), setting_(setting) {}

  // Shows the stored text as the number that it is.
  void Load();

  // The box's text as it is into the variable; what was loaded when the box could not show it and nobody has typed.
  void Keep();

 private:
  Setting setting_;
  std::string loaded_;
};

// A check box's value as the settings hold it: "1" or "0".
std::string ValueText(const platform::CheckBox& box);

}  // namespace settings
