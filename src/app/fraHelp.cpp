#include "app/fraHelp.h"

#include "platform/addresses.h"
#include "platform/product.h"
#include "platform/special_folder.h"
#include "platform/start_program.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace app {
using namespace platform;

namespace {

constexpr char kAbout[] = QUELLIX_CAPTION
    "\r\n\r\nQuellix removes the traces that web browsing and everyday work leave on this computer: lists of "
    "visited pages and opened documents, caches, cookies, temporary files and the recycle bin. It shreds "
    "files and folders so that they do not come back.\r\n\r\nNothing that it finds leaves this computer.";

}  // namespace

void fraHelp::OnInit() {
  Label16.SetText(kHelpAddress);
  lblAbout.SetText(kAbout);
}

void fraHelp::OnClick(int id) {
  if (id == IDC_Label16) OpenPage(kHelpAddress);
  if (id == IDC_Label22) OpenPage(kContactAddress);
}

std::optional<LRESULT> fraHelp::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DRAWITEM) {
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    (item.CtlID == IDC_Label16 ? Label16 : Label22).Draw(item);
    return TRUE;
  }
  const auto window = reinterpret_cast<HWND>(wParam);
  if (message == WM_SETCURSOR && (window == Label16.Handle() || window == Label22.Handle())) {
    const HCURSOR hand = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32649));  // IDC_HAND; missing on Windows 95 and NT 4
    if (hand == nullptr) return {};
    ::SetCursor(hand);
    return TRUE;
  }
  return {};
}

// An elevated program leaves it to the running shell: a browser that it started would browse with an administrator's rights.
void fraHelp::OpenPage(const char* address) {
  const Path shell = WindowsFolder() / Wide<"explorer.exe">();
  if (IsElevated() && StartProgram(shell, L'"' + Widen(address) + L'"', SW_SHOWNORMAL)) return;
  late::ShellOpen(Handle(), "Open", address, nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace app
