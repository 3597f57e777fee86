// The panel "Main Settings": the check boxes of the catalogue and the buttons that select and erase.
#pragma once

#include <deque>
#include <string>

#include "app/fraMain_ids.h"
#include "app/quellix_ids.h"
#include "cookies/frmCookie.h"
#include "erase/erase_item.h"
#include "platform/clsIni.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/main_window.h"
#include "platform/panel.h"

namespace app {
using namespace platform;

class fraMain final : public Panel {
 public:
  explicit fraMain(MainWindow& window);

  void ShowBossKey(const std::string& name) { Label1.SetText(name); }

  // The ticked boxes, those of items that never run among them.
  int SelectedItemCount() const;

  // Each box takes its item flag's number; a flag that no box can show leaves its box as it is.
  void LoadEraseSettings() override;

 private:
  // A box and the item whose flag it keeps.
  struct ItemBox {
    ItemBox(Dialog& dialog, const erase::EraseItem& ofItem);

    const erase::EraseItem& item;
    CheckBox box;
  };

  void OnInit() override;
  void OnClick(int id) override;
  void SetEveryBox(int value);

  MainWindow& window_;
  cookies::frmCookie cookies_;
  std::deque<ItemBox> boxes_;       // in the order of the boxes
  Label Label1{*this, IDC_Label1};  // the boss key
  Picture picNet{*this, IDC_picNet, IDB_picNet};
  Picture picOpe{*this, IDC_picOpe, IDB_picOpe};
  UniqueGdiObject bossKeyFont_;
};

}  // namespace app
