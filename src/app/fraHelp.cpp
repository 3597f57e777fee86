#include "app/fraHelp.h"

#include "platform/addresses.h"
#include "platform/child_program.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/wide_system.h"

namespace app {
using namespace platform;

namespace {

// An elevated program leaves it to the running shell: a browser that it started would browse with an administrator's rights.
void OpenAsTheUser(HWND owner, const WideText& page) {
  const Path shell = WindowsFolder() / Wide<"explorer.exe">();
  if (IsElevated() && StartProgram(shell, L'"' + page + L'"', SW_SHOWNORMAL)) return;
  StartByShell(owner, {.verb = L"Open", .what = page});
}

constexpr char kAbout[] =
    "Quellix is made by a few people who have written small programs for Windows for many years and still like to. We use "
    "it on our own computers every day.\r\n\r\nWe believe that what somebody reads, writes and looks up is nobody else's "
    "business, and that a program of this kind has to do what it says. If it does not, please write to us: every letter is "
    "read and answered by one of us.";

}  // namespace

void fraHelp::OnInit() {
  Label16.SetText(kHelpAddress);
  lblAbout.SetText(kAbout);
}

void fraHelp::OnClick(int id) {
  if (id == IDC_Label16) OpenHelp();
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

void fraHelp::OpenHelp() {
  const Path manual = ProgramFolder() / Wide<"manual\\index.html">();
  const DWORD attributes = NativeAttributes(manual);
  if (attributes == INVALID_FILE_ATTRIBUTES || IsFolder(attributes)) return OpenPage(kHelpAddress);
  OpenAsTheUser(Handle(), manual.Shown());
}

void fraHelp::OpenPage(const char* address) { OpenAsTheUser(Handle(), Widen(address)); }

}  // namespace app
