#include "app/fraMain.h"

#include <cstddef>
#include <iterator>
#include <span>

#include "erase/catalogue.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "platform/window_text.h"
#include "settings/bound_controls.h"

namespace app {
using namespace platform;

namespace {

// Each array has the numbers of a decade, so that its boxes follow one another whatever is added to the others.
constexpr int kFirstIds[] = {IDC_chkIEsettings_0, IDC_chkWinsettings_0, IDC_chkNetsettings_0, IDC_chkOsettings_0};
static_assert(std::size(kFirstIds) == erase::kBoxArrayCount);

int IdOf(const erase::EraseItem& item) { return kFirstIds[static_cast<std::size_t>(item.array)] + item.index; }

}  // namespace

fraMain::ItemBox::ItemBox(Dialog& dialog, const erase::EraseItem& ofItem) : item(ofItem), box(dialog, IdOf(ofItem)) {
  box.SetText(item.caption);
}

fraMain::fraMain(MainWindow& window) : Panel(IDD_fraMain, IDC_fraMain), window_(window), cookies_(window) {
  for (const erase::EraseItem* item : erase::ItemsInBoxOrder()) boxes_.emplace_back(*this, *item);
}

void fraMain::OnInit() {
  LOGFONTA font = FontOfWindow(Handle());
  font.lfHeight = font.lfHeight * 9 / 5;
  font.lfWeight = FW_BOLD;
  bossKeyFont_ = MakeFont(font);
  ::SendMessageA(Label1.Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(bossKeyFont_.get()), FALSE);
}

void fraMain::OnClick(int id) {
  for (const ItemBox& row : boxes_)
    if (id == row.box.Id()) erase::ItemFlag(row.item) = settings::ValueText(row.box);
  if (id == IDC_cmdSelectAll) SetEveryBox(1);
  if (id == IDC_cmdDeselectAll) SetEveryBox(0);
  if (id == IDC_cmdCookiesOption) {
    window_.SetStatusText("Displaying Cookies");
    cookies_.Show();
  }
  if (id == IDC_Label6) window_.HideByBossKey();
  if (id == IDC_cmdClean_2) {
    window_.ShowErasePanel();
    window_.EraseOnly();
  }
}

void fraMain::SetEveryBox(int value) {
  for (ItemBox& row : boxes_) row.box.SetValue(value);
}

void fraMain::LoadEraseSettings() {
  for (ItemBox& row : boxes_) resumeNext([&row] { row.box.SetValue(NumberOf(erase::ItemFlag(row.item))); });
}

int fraMain::SelectedItemCount() const {
  int count = 0;
  for (const ItemBox& row : boxes_) count += row.box.Value() == 1 ? 1 : 0;
  return count;
}

}  // namespace app
