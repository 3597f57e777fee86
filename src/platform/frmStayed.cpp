#include "platform/frmStayed.h"

#include <cstddef>
#include <cstring>
#include <string>

#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/system_functions.h"
#include "platform/tally_text.h"
#include "platform/wide_system.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace platform {

namespace {

// The clipboard owns the memory once it has taken it.
void PutOnClipboard(HWND owner, const WideText& text) {
  const bool isWide = UsesWideNames();
  const auto bytes = static_cast<int>((text.size() + 1) * sizeof(wchar_t));
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(bytes));
  void* const place = ::GlobalLock(memory);
  if (place == nullptr) return;
  if (isWide)
    std::memcpy(place, text.c_str(), static_cast<std::size_t>(bytes));
  else
    ::WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, static_cast<char*>(place), bytes, nullptr, nullptr);
  ::GlobalUnlock(memory);
  const bool isTaken = ::OpenClipboard(owner) && ::EmptyClipboard() &&
                       ::SetClipboardData(isWide ? CF_UNICODETEXT : CF_TEXT, memory) != nullptr;
  ::CloseClipboard();
  if (isTaken) return;
  if (void* const kept = ::GlobalLock(memory)) OverwriteMemory(kept, static_cast<std::size_t>(bytes));
  ::GlobalUnlock(memory);
  ::GlobalFree(memory);
}

}  // namespace

void frmStayed::Show(const Tally& tally, Tally::Lines lines, HWND log, std::size_t line) {
  if (!MayShowMessages()) return;
  tally_ = &tally;
  lines_ = lines;
  log_ = log;
  if (Handle() == nullptr && Create(IDD_frmStayed, MainWindowHandle) == nullptr) return;
  const LineTally sum = tally.Sum(lines);
  ::SetDlgItemTextA(Handle(), IDC_lblLine, Caption(line));
  ::SetDlgItemTextA(Handle(), IDC_lblTally, Sentence(sum));
  SendToList(LVM_SETITEMCOUNT, static_cast<WPARAM>(sum.named), 0);
  ::InvalidateRect(Handle(), nullptr, TRUE);
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
}

void frmStayed::Forget(const Tally& tally) {
  if (tally_ != &tally) return;
  ::DestroyWindow(Handle());
  OverwriteMemory(caption_, sizeof caption_);
}

void frmStayed::AddColumn(int column, const char* heading, int width) const {
  LVCOLUMNA added{};
  added.mask = LVCF_TEXT | LVCF_WIDTH;
  added.pszText = const_cast<char*>(heading);
  added.cx = width;
  SendToList(LVM_INSERTCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&added));
}

void frmStayed::OnInit() {
  PlaceOver(MainWindowHandle);
  const HWND list = ::GetDlgItem(Handle(), IDC_lstStayed);
  RECT area;
  ::GetClientRect(list, &area);
  const int room = area.right - ::GetSystemMetrics(SM_CXVSCROLL);
  AddColumn(0, "What stayed", room * 3 / 5);
  AddColumn(1, "Why", room * 2 / 5);
  MoveFocusTo(list);
}

// Of a list the line, and the text of any other control, which answers the second message with nothing.
const char* frmStayed::Caption(std::size_t line) {
  const auto place = reinterpret_cast<LPARAM>(caption_);
  ::SendMessageA(log_, WM_GETTEXT, sizeof caption_, place);
  ::SendMessageA(log_, LB_GETTEXT, line, place);
  return caption_;
}

const wchar_t* frmStayed::TextAt(int row, int column) const {
  WideView texts = tally_->Texts(lines_);
  for (int before = 2 * row + column; before > 0 && !texts.empty(); --before) TakeText(texts);
  return texts.empty() ? L"" : texts.data();
}

// A path that is wider than its column loses folders in its middle, so that its name can be read. A text that is longer than
// the list's room for it ends earlier.
std::optional<LRESULT> frmStayed::OnMessage(UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_NOTIFY) return {};
  const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
  LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lParam)->item;  // for ANSI the same, but for the text
  // No line is looked for by the letters that somebody types.
  if (code == static_cast<UINT>(LVN_ODFINDITEMA) || code == static_cast<UINT>(LVN_ODFINDITEMW)) return -1;
  const bool isWide = code == static_cast<UINT>(LVN_GETDISPINFOW);
  if ((!isWide && code != static_cast<UINT>(LVN_GETDISPINFOA)) || (item.mask & LVIF_TEXT) == 0) return {};
  constexpr UINT kFit = DT_PATH_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX;
  constexpr int kMargins = 12;      // pixels, a little more than the control leaves on both sides of a cell's text
  constexpr std::size_t kDots = 4;  // characters that DrawText may add
  RECT cell{0, 0, SendToList(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(item.iSubItem), 0) - kMargins, 0};
  const HDC context = ::GetDC(Handle());
  const HGDIOBJ before = ::SelectObject(context, reinterpret_cast<HGDIOBJ>(SendToList(WM_GETFONT, 0, 0)));
  WideText text = TextAt(item.iItem, item.iSubItem);
  if (isWide) {
    text.resize(text.size() + kDots);
    late::DrawTextWide(context, text.data(), -1, &cell, kFit);
    item.pszText[WideView(text.c_str()).copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1)] = L'\0';
  } else {
    std::string narrow = Narrow(text);
    narrow.resize(narrow.size() + kDots);
    ::DrawTextA(context, narrow.data(), -1, &cell, kFit);
    ::lstrcpynA(reinterpret_cast<char*>(item.pszText), narrow.c_str(), item.cchTextMax);
  }
  ::SelectObject(context, before);
  ::ReleaseDC(Handle(), context);
  return 0;
}

void frmStayed::OnClick(int id) {
  if (id == IDC_cmdCopy) Copy();
  if (id == IDC_cmdCloseStayed) Close();
}

void frmStayed::Copy() {
  WideText text;
  for (std::size_t line = lines_.first; line < lines_.end; ++line) AppendText(text, Caption(line), *tally_, line);
  PutOnClipboard(Handle(), text);
}

}  // namespace platform
