#include "platform/frmStayed.h"

#include <cstring>

#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/tally_text.h"
#include "platform/wide_system.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace platform {

namespace {

// The clipboard owns the memory once it has taken it.
void PutOnClipboard(HWND owner, UINT format, const void* text, std::size_t bytes) {
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
  void* const place = ::GlobalLock(memory);
  if (place == nullptr) return;
  std::memcpy(place, text, bytes);
  ::GlobalUnlock(memory);
  const bool isTaken = ::OpenClipboard(owner) && ::EmptyClipboard() && ::SetClipboardData(format, memory) != nullptr;
  ::CloseClipboard();
  if (!isTaken) ::GlobalFree(memory);
}

}  // namespace

TalliedLines::Caption TalliedLines::CaptionOf(int ofLine) const {
  Caption caption = {};
  ::SendMessageA(control, isList ? LB_GETTEXT : WM_GETTEXT, isList ? static_cast<WPARAM>(ofLine) : sizeof caption.text,
                 reinterpret_cast<LPARAM>(caption.text));
  return caption;
}

// A row for each name, and at the end one that tells how many more there are.
void frmStayed::Show(const TalliedLines& lines) {
  if (!MayShowMessages()) return;
  lines_ = lines;
  if (Handle() == nullptr && Create(IDD_frmStayed, MainWindowHandle) == nullptr) return;
  const LineTally sum = lines.tally->Sum(lines.first, lines.end);
  Words sentence;
  PutSentence(sentence, sum);
  ::SetDlgItemTextA(Handle(), IDC_lblLine, lines.CaptionOf(lines.line).text);
  ::SetDlgItemTextA(Handle(), IDC_lblTally, sentence.Text());
  SendToList(LVM_SETITEMCOUNT, static_cast<WPARAM>(sum.named + (sum.stayed > sum.named ? 1 : 0)), 0);
  ::InvalidateRect(Handle(), nullptr, TRUE);
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
}

void frmStayed::OnInit() {
  PlaceOver(MainWindowHandle);
  RECT area;
  const HWND list = ::GetDlgItem(Handle(), IDC_lstStayed);
  ::GetClientRect(list, &area);
  const int room = area.right - ::GetSystemMetrics(SM_CXVSCROLL);
  char what[] = "What stayed", why[] = "Why";
  LVCOLUMNA column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = what;
  column.cx = room * 3 / 5;
  SendToList(LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
  column.pszText = why;
  column.cx = room - column.cx;
  SendToList(LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&column));
  MoveFocusTo(list);
}

WideText frmStayed::TextAt(int row, int column) const {
  WideView texts = lines_.tally->Texts(lines_.first, lines_.end);
  for (int before = 2 * row + column; before > 0 && !texts.empty(); --before) TakeText(texts);
  if (!texts.empty()) return WideText(TakeText(texts));
  Words others;
  if (column == 0) PutOthers(others, lines_.tally->Sum(lines_.first, lines_.end));
  return Widen(others.Text());
}

// A text that is longer than the list's room for it ends earlier.
std::optional<LRESULT> frmStayed::OnMessage(UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_NOTIFY) return {};
  const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
  LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(lParam)->item;  // for wide texts the same, but for the text
  const bool isWide = code == static_cast<UINT>(LVN_GETDISPINFOW);
  if ((!isWide && code != static_cast<UINT>(LVN_GETDISPINFOA)) || (item.mask & LVIF_TEXT) == 0) return {};
  const WideText text = TextAt(item.iItem, item.iSubItem);
  if (isWide) {
    auto* const place = reinterpret_cast<wchar_t*>(item.pszText);
    place[text.copy(place, static_cast<std::size_t>(item.cchTextMax) - 1)] = L'\0';
  } else {
    ::lstrcpynA(item.pszText, Narrow(text).c_str(), item.cchTextMax);
  }
  return 0;
}

void frmStayed::OnClick(int id) {
  if (id == IDC_cmdCopy) Copy();
  if (id == IDC_cmdCloseStayed) Close();
}

void frmStayed::Copy() const {
  WideText text;
  for (std::size_t line = lines_.first; line < lines_.end; ++line)
    AppendText(text, lines_.CaptionOf(static_cast<int>(line)).text, *lines_.tally, line);
  if (UsesWideNames()) return PutOnClipboard(Handle(), CF_UNICODETEXT, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  const std::string ansi = Narrow(text);
  PutOnClipboard(Handle(), CF_TEXT, ansi.c_str(), ansi.size() + 1);
}

}  // namespace platform
