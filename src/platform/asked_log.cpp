#include "platform/asked_log.h"

#include <cstddef>
#include <utility>

#include "platform/frmStayed.h"
#include "platform/tally_text.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace platform {

namespace {

frmStayed stayed;  // one for all logs

}  // namespace

void AskedLog::Clear() {
  Forget();
  tally_.Clear();
}

void AskedLog::Forget() {
  HideTip();
  stayed.Forget(tally_);
  tally_.Forget();
}

void AskedLog::Attach(HWND control) {
  window_ = control;
  tip_ = ::CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                           window_, nullptr, nullptr, nullptr);
  constexpr LPARAM kWidest = 400;  // pixels; a longer text has several lines
  ::SendMessageA(tip_, TTM_SETMAXTIPWIDTH, 0, kWidest);
  Leave();
  next_ = std::exchange(first_, this);
  system_ = reinterpret_cast<WNDPROC>(::SetWindowLongA(window_, GWL_WNDPROC, reinterpret_cast<LONG>(&Procedure)));
}

void AskedLog::Leave() {
  AskedLog** place = &first_;
  while (*place != nullptr && *place != this) place = &(*place)->next_;
  if (*place == this) *place = next_;
}

// Nothing here raises an error.
LRESULT CALLBACK AskedLog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  AskedLog* log = first_;
  while (log != nullptr && log->window_ != window) log = log->next_;
  if (log == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
  if (log->Answer(message, wParam, lParam)) return 0;
  const LRESULT result = log->Ask(message, wParam, lParam);
  if (message != WM_GETDLGCODE || lParam == 0) return result;
  const auto& key = *reinterpret_cast<const MSG*>(lParam);
  return key.message == WM_KEYDOWN && key.wParam == VK_RETURN ? result | DLGC_WANTMESSAGE : result;
}

// True for a message that the control is not to see. What is no list answers the questions for a line with 0, which is its
// only one.
bool AskedLog::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      PointAt(lParam);
      return false;
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONUP:
      Tell(Ask(LB_ITEMFROMPOINT, 0, lParam));
      return true;
    case WM_KEYDOWN:
      if (wParam != VK_RETURN) return false;
      if (!IsRepeatedEnter(message, wParam, lParam)) Tell(Ask(LB_GETCURSEL, 0, 0));
      return true;
    case WM_CONTEXTMENU:
      if (lParam != -1) return false;  // of the right button, which has been told of by then, and not of the key
      Tell(Ask(LB_GETCURSEL, 0, 0));
      return true;
    default:
      return false;
  }
}

LRESULT AskedLog::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  return ::CallWindowProcA(system_, window_, message, wParam, lParam);
}

// The tool is the line, so that the tooltip of one goes when the mouse is over another one.
void AskedLog::PointAt(LPARAM place) {
  const LRESULT line = Ask(LB_ITEMFROMPOINT, 0, place);
  if (line != pointedAt_ || !::IsWindowVisible(tip_)) {  // a run may have done more since the last one
    HideTip();
    pointedAt_ = line;
    const Tally::Lines lines = tally_.ToldBy(static_cast<std::size_t>(line));
    TOOLINFOA tool{};
    tool.cbSize = offsetof(TOOLINFOA, lParam);  // the record of the first version
    tool.hwnd = window_;
    ::GetClientRect(window_, &tool.rect);
    Ask(LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&tool.rect));
    // Added anew: the old ones of this control keep the place of a tool where its text changes.
    ::SendMessageA(tip_, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    tool.lpszText = const_cast<char*>(Sentence(tally_.Sum(lines)));  // of which the tooltip takes a copy
    if (lines.end > 0) ::SendMessageA(tip_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  }
  MSG message{window_, WM_MOUSEMOVE, 0, place, 0, {}};
  ::SendMessageA(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

void AskedLog::HideTips() {
  for (AskedLog* log = first_; log != nullptr; log = log->next_) log->HideTip();
}

void AskedLog::HideTip() {
  pointedAt_ = -1;
  ::SendMessageA(tip_, TTM_POP, 0, 0);
}

void AskedLog::Tell(LRESULT line) {
  HideTip();
  const auto asked = static_cast<std::size_t>(line);
  if (const Tally::Lines lines = tally_.ToldBy(asked); lines.end > 0) stayed.Show(tally_, lines, window_, asked);
}

}  // namespace platform
