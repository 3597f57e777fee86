#include "platform/asked_log.h"

#include <algorithm>

#include "platform/runtime_error.h"
#include "platform/tally_text.h"
#include "platform/window_text.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace platform {

void AskedLog::Clear() {
  Forget();
  tally_.Clear();
}

void AskedLog::Forget() {
  HideTip();
  stayed_.Forget();
  tally_.Forget();
}

void AskedLog::Attach() {
  window_ = ::GetDlgItem(dialog_.Handle(), id_);
  isList_ = ClassOfWindow(window_) == "ListBox";
  tip_ = ::CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, "", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, window_,
                           nullptr, nullptr, nullptr);
  ::SetWindowLongA(window_, GWL_USERDATA, reinterpret_cast<LONG>(this));
  system_ = reinterpret_cast<WNDPROC>(::SetWindowLongA(window_, GWL_WNDPROC, reinterpret_cast<LONG>(&Procedure)));
}

void AskedLog::Detach() {
  window_ = nullptr;
  tip_ = nullptr;  // the system destroys it with its owner
}

LRESULT CALLBACK AskedLog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto& log = *reinterpret_cast<AskedLog*>(::GetWindowLongA(window, GWL_USERDATA));
  bool isDone = false;
  quietly([&] { isDone = log.Answer(message, wParam, lParam); });
  if (isDone) return 0;
  const LRESULT result = log.Ask(message, wParam, lParam);
  if (message != WM_GETDLGCODE || lParam == 0) return result;
  const auto& key = *reinterpret_cast<const MSG*>(lParam);
  return key.message == WM_KEYDOWN && key.wParam == VK_RETURN ? result | DLGC_WANTMESSAGE : result;
}

// True for a message that the control is not to see. A double click follows a click that chose the line.
bool AskedLog::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      PointAt(lParam);
      return false;
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONUP:
      Tell(LineAt(lParam));
      return true;
    case WM_KEYDOWN:
      if (wParam != VK_RETURN) return false;
      Tell(ChosenLine());
      return true;
    case WM_CONTEXTMENU:  // of the key; the right button has been told of by then
      Tell(ChosenLine());
      return true;
    default:
      return false;
  }
}

LRESULT AskedLog::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  return ::CallWindowProcA(system_, window_, message, wParam, lParam);
}

int AskedLog::LineAt(LPARAM place) const {
  if (!isList_) return 0;
  const LRESULT item = Ask(LB_ITEMFROMPOINT, 0, place);
  return HIWORD(item) != 0 || LOWORD(item) >= Ask(LB_GETCOUNT) ? -1 : LOWORD(item);
}

int AskedLog::ChosenLine() const { return isList_ ? static_cast<int>(Ask(LB_GETCURSEL)) : 0; }

// None for a line that nothing is told of.
TalliedLines AskedLog::LinesOf(int line) const {
  TalliedLines lines = {&tally_, window_, isList_, line, 0, 0};
  const auto at = static_cast<std::size_t>(line);
  if (line < 0 || at >= std::min(tally_.Count(), Tally::kLines)) return lines;
  lines.end = at + 1;
  if (!isList_) return lines;
  const bool isAboutAll = line > 0 && Ask(LB_GETTEXTLEN, at - 1) == 0;
  lines.first = isAboutAll ? 0 : at;
  if (Ask(LB_GETTEXTLEN, at) == 0) lines.end = lines.first;
  return lines;
}

// The tool is the line, so that the tooltip of one goes when the mouse is over another one.
void AskedLog::PointAt(LPARAM place) {
  const int line = LineAt(place);
  if (line != pointedAt_) {
    HideTip();
    pointedAt_ = line;
    const TalliedLines lines = LinesOf(line);
    Words sentence;
    if (lines.first < lines.end) PutSentence(sentence, tally_.Sum(lines.first, lines.end));
    TOOLINFOA tool{};
    tool.cbSize = offsetof(TOOLINFOA, lParam);  // the record of the first version
    tool.hwnd = window_;
    tool.lpszText = const_cast<char*>(sentence.Text());  // of which the tooltip takes a copy
    ::GetClientRect(window_, &tool.rect);
    if (isList_) Ask(LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&tool.rect));
    // Added anew: the old ones of this control keep the place of a tool where its text changes.
    ::SendMessageA(tip_, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    if (sentence.Length() > 0) ::SendMessageA(tip_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  }
  MSG message{window_, WM_MOUSEMOVE, 0, place, 0, {}};
  ::SendMessageA(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

void AskedLog::HideTip() {
  pointedAt_ = -1;
  ::SendMessageA(tip_, TTM_POP, 0, 0);
}

void AskedLog::Tell(int line) {
  HideTip();
  const TalliedLines lines = LinesOf(line);
  if (lines.first < lines.end) stayed_.Show(lines);
}

}  // namespace platform
