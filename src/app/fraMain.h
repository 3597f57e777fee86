// The panel "Main Settings": the check boxes of the catalogue and the buttons that select and erase.
#pragma once

#include <array>
#include <deque>

#include "app/fraMain_ids.h"
#include "cookies/frmCookie.h"
#include "erase/catalogue.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/main_window.h"

namespace app {
using namespace platform;

class fraMain : public Dialog {
 public:
  explicit fraMain(MainWindow& window);
  HWND Create(HWND parent);

  // Each box takes its item flag's number; a flag that no box can show leaves its box as it is.
  void LoadItemBoxes();
  int SelectedItemCount();

  Label Label1{*this, IDC_Label1};  // the boss key
  Label Label6{*this, IDC_Label6};

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;

  CheckBox& Box(erase::BoxArray array, int index) {
    return boxes_[static_cast<std::size_t>(array)][static_cast<std::size_t>(index)];
  }
  void ClickBox(erase::BoxArray array, int index);
  void SetEveryBox(int value);
  void ShowPicture(int id, int bitmap, UniqueGdiObject& owner);

  MainWindow& window_;
  cookies::frmCookie cookies_;
  std::array<std::deque<CheckBox>, erase::kBoxCounts.size()> boxes_;
  UniqueGdiObject picNet_;
  UniqueGdiObject picOpe_;
  UniqueGdiObject bossKeyFont_;
};

}  // namespace app
