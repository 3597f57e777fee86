#include "app/fraHelp.h"

#include "app/quellix_ids.h"
#include "platform/addresses.h"
#include "platform/product.h"
#include "platform/system_functions.h"

namespace app {
using namespace platform;

namespace {

constexpr char kAbout[] = QUELLIX_CAPTION
    "\r\n\r\nQuellix removes the traces that web browsing and everyday work leave on this computer: lists of "
    "visited pages and opened documents, caches, cookies, temporary files and the recycle bin. It shreds "
    "files and folders so that they do not come back.\r\n\r\nNothing that it finds leaves this computer.";

}  // namespace

HWND fraHelp::Create(HWND parent) { return Dialog::Create(IDD_fraHelp, parent); }

void fraHelp::OnInit() {
  Label16.SetText(kHelpAddress);
  ::SetDlgItemTextA(Handle(), IDC_lblAbout, kAbout);
  picAbout_.reset(
      ::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDB_about), IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS));
  ::SendDlgItemMessageA(Handle(), IDC_picAbout, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picAbout_.get()));
}

void fraHelp::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  if (id == IDC_Label16) OpenPage(kHelpAddress);
  if (id == IDC_Label22) OpenPage(kContactAddress);
}

bool fraHelp::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
  if (message == WM_DRAWITEM) {
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    (item.CtlID == IDC_Label16 ? Label16 : Label22).Draw(item);
    result = TRUE;
    return true;
  }
  const auto window = reinterpret_cast<HWND>(wParam);
  if (message == WM_SETCURSOR && (window == Label16.Handle() || window == Label22.Handle())) {
    const HCURSOR hand = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649));  // IDC_HAND; missing on Windows 95 and NT 4
    if (hand == nullptr) return false;
    ::SetCursor(hand);
    result = TRUE;
    return true;
  }
  return false;
}

void fraHelp::OpenPage(const char* address) { late::ShellOpen(Handle(), "Open", address, nullptr, nullptr, SW_SHOWNORMAL); }

}  // namespace app
