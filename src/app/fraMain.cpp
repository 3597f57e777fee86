#include "app/fraMain.h"

#include "app/quellix_ids.h"
#include "platform/runtime_error.h"
#include "platform/text_value.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

namespace {

constexpr std::array<int, erase::kBoxCounts.size()> kFirstIds = {IDC_chkIEsettings_0, IDC_chkWinsettings_0,
                                                                 IDC_chkNetsettings_0, IDC_chkOsettings_0};

// Runs `visit(array, index)` over every box in the order of the arrays.
template <class Visit>
void ForEachBox(Visit visit) {
  for (std::size_t array = 0; array < erase::kBoxCounts.size(); ++array)
    for (int index = 0; index < erase::kBoxCounts[array]; ++index) visit(static_cast<erase::BoxArray>(array), index);
}

}  // namespace

fraMain::fraMain(MainWindow& window) : window_(window), cookies_(window) {
  ForEachBox([this](erase::BoxArray array, int index) {
    const auto number = static_cast<std::size_t>(array);
    boxes_[number].emplace_back(*this, kFirstIds[number] + index).SetText(erase::FindItem(array, index)->caption);
  });
}

HWND fraMain::Create(HWND parent) { return Dialog::Create(IDD_fraMain, parent); }

void fraMain::OnInit() {
  LOGFONTA font{};
  ::GetObjectA(reinterpret_cast<HGDIOBJ>(::SendMessageA(Handle(), WM_GETFONT, 0, 0)), sizeof font, &font);
  font.lfHeight = font.lfHeight * 9 / 5;
  font.lfWeight = FW_BOLD;
  bossKeyFont_.reset(::CreateFontIndirectA(&font));
  ::SendMessageA(Label1.Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(bossKeyFont_.get()), FALSE);
  ShowPicture(IDC_picNet, IDB_picNet, picNet_);
  ShowPicture(IDC_picOpe, IDB_picOpe, picOpe_);
}

void fraMain::ShowPicture(int id, int bitmap, UniqueGdiObject& owner) {
  // Mapped, so that the picture's grey ground is the dialog's colour in every scheme.
  owner.reset(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(bitmap), IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS));
  ::SendDlgItemMessageA(Handle(), id, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(owner.get()));
}

void fraMain::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  ForEachBox([this, id](erase::BoxArray array, int index) {
    if (id == kFirstIds[static_cast<std::size_t>(array)] + index) ClickBox(array, index);
  });
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

void fraMain::ClickBox(erase::BoxArray array, int index) {
  settings::Settings[erase::FindItem(array, index)->flag] = Trim(std::to_string(Box(array, index).Value()));
}

void fraMain::SetEveryBox(int value) {
  ForEachBox([this, value](erase::BoxArray array, int index) { Box(array, index).SetValue(value); });
}

void fraMain::LoadItemBoxes() {
  ForEachBox([this](erase::BoxArray array, int index) {
    resumeNext([&] { Box(array, index).SetValue(NumberOf(settings::Settings[erase::FindItem(array, index)->flag])); });
  });
}

int fraMain::SelectedItemCount() {
  int count = 0;
  ForEachBox([&](erase::BoxArray array, int index) { count += Box(array, index).Value() == 1 ? 1 : 0; });
  return count;
}

}  // namespace app
