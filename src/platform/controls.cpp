#include "platform/controls.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "platform/drawing_size.h"
#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "platform/text_value.h"
#include "platform/wide_system.h"
#include "platform/window_text.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace platform {

namespace {

// Windows 9x measures no more than 8,192 characters, and a list there scrolls no further than 32,767 pixels.
constexpr std::size_t kMeasuredCharacters = 2000;

// Measured in a context of its own, kept for the next text: asking the window for one costs more than the measuring.
int TextWidth(HWND window, const WideText& text) {
  static const HDC context = ::CreateCompatibleDC(nullptr);
  const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(::SendMessageA(window, WM_GETFONT, 0, 0));
  const HGDIOBJ before = ::SelectObject(context, font != nullptr ? font : ::GetStockObject(SYSTEM_FONT));
  SIZE size{};
  const int length = static_cast<int>(std::min<std::size_t>(text.size(), kMeasuredCharacters));
  ::GetTextExtentPoint32W(context, text.data(), length, &size);  // one of the few wide functions that Windows 9x has
  ::SelectObject(context, before);
  return size.cx;
}

// A property's number as the property takes it: whole, from `min` to `max`.
int PropertyValue(double value, int min, int max) {
  if (!(value >= min - 0.5 && value <= max + 0.5)) Raise(kInvalidPropertyValue);
  const int whole = ToInteger(value);
  if (whole < min || whole > max) Raise(kInvalidPropertyValue);
  return whole;
}

// The window of its own that a control lies in; it is the one that the keys are handled for.
HWND WindowAround(HWND control) {
  HWND window = control;
  while (window != nullptr && (::GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0) window = ::GetParent(window);
  return window;
}

void HandKeyboardOn(HWND from) {
  const HWND focus = ::GetFocus();
  if (focus != nullptr && (focus == from || ::IsChild(from, focus)))
    ::SendMessageA(WindowAround(from), WM_NEXTDLGCTL, 0, FALSE);
}

void FrameInHighlight(HWND window) {
  const HDC context = ::GetDC(window);
  RECT area;
  ::GetClientRect(window, &area);
  ::FrameRect(context, &area, ::GetSysColorBrush(COLOR_HIGHLIGHT));
  ::ReleaseDC(window, context);
}

}  // namespace

Control::Control(Dialog& dialog, int id) : dialog_(dialog), id_(id) { dialog.Add(*this); }

void Control::Attach() {
  window_ = ::GetDlgItem(dialog_.Handle(), id_);
  if (text_) showsItsText_ = ::SetWindowTextA(window_, text_->c_str()) != FALSE;
  if (enabled_) ::EnableWindow(window_, *enabled_);
  if (visible_) ::ShowWindow(window_, *visible_ ? SW_SHOWNA : SW_HIDE);
  ShowState();
}

WNDPROC Control::PutBefore(const void* control, WNDPROC procedure) const {
  const LONG known = reinterpret_cast<LONG>(control);
  ::SetWindowLongA(window_, GWL_USERDATA, known);
  if (::GetWindowLongA(window_, GWL_USERDATA) != known) return nullptr;
  return reinterpret_cast<WNDPROC>(::SetWindowLongA(window_, GWL_WNDPROC, reinterpret_cast<LONG>(procedure)));
}

void Control::SetEnabled(bool enabled) {
  if (window_ == nullptr) {
    enabled_ = enabled;
    return;
  }
  if (!enabled) HandKeyboardOn(window_);
  ::EnableWindow(window_, enabled);
}

void Control::SetVisible(bool visible) {
  if (window_ == nullptr)
    visible_ = visible;
  else
    ::ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

std::string Control::Text() const { return window_ == nullptr ? text_.value_or("") : TextOfWindow(window_); }

void Control::SetText(const std::string& text) {
  if (window_ == nullptr)
    text_ = text;
  else
    showsItsText_ = ::SetWindowTextA(window_, text.c_str()) != FALSE;
}

void Picture::ShowState() {
  const HDC screen = ::GetDC(nullptr);
  const int size = bitmap_ + kDrawingStep * DrawingSteps(::GetDeviceCaps(screen, LOGPIXELSX));
  ::ReleaseDC(nullptr, screen);
  UniqueGdiObject loaded(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(size), IMAGE_BITMAP, 0, 0, loading_));
  Send(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(loaded.get()));
  loaded_ = std::move(loaded);
}

void CheckBox::SetValue(double value) {
  if (value != 0.0 && value != 1.0) Raise(kInvalidPropertyValue);
  value_ = value == 1.0 ? BST_CHECKED : BST_UNCHECKED;
  if (Handle() != nullptr) ShowState();
  FireClick();
}

void OptionButton::Choose() {
  group_.chosen = Id();
  if (Handle() != nullptr) {
    for (const HWND one : Group())
      if (one != Handle()) ::SendMessageA(one, BM_SETCHECK, BST_UNCHECKED, 0);
    ShowState();
  }
  FireClick();
}

// Everything between two controls with the group style.
std::vector<HWND> OptionButton::Group() const {
  std::vector<HWND> group = {Handle()};
  for (HWND other = ::GetNextDlgGroupItem(Parent(), Handle(), FALSE); other != nullptr && other != Handle();
       other = ::GetNextDlgGroupItem(Parent(), other, FALSE))
    group.push_back(other);
  return group;
}

LRESULT CALLBACK OptionButton::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const button = Of<OptionButton>(window);
  if (button == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
  std::optional<LRESULT> answer;
  if (message == WM_SETFOCUS) quietly([&] { answer = button->TakeKeyboard(wParam, lParam); });
  if (answer) return *answer;
  return ::CallWindowProcA(button->system_, window, message, wParam, lParam);
}

// Who was checked, and where the tab order enters the group, stays as it was.
LRESULT OptionButton::TakeKeyboard(WPARAM wParam, LPARAM lParam) {
  struct State {
    HWND window;
    LRESULT check;
    LONG style;
  };
  std::vector<State> before;
  for (const HWND one : Group())
    before.push_back({one, ::SendMessageA(one, BM_GETCHECK, 0, 0), ::GetWindowLongA(one, GWL_STYLE)});
  IgnoreClicks(true);
  const LRESULT result = ::CallWindowProcA(system_, Handle(), WM_SETFOCUS, wParam, lParam);
  IgnoreClicks(false);
  for (const State& state : before) {
    if (::SendMessageA(state.window, BM_GETCHECK, 0, 0) != state.check)
      ::SendMessageA(state.window, BM_SETCHECK, static_cast<WPARAM>(state.check), 0);
    const LONG style = ::GetWindowLongA(state.window, GWL_STYLE);
    ::SetWindowLongA(state.window, GWL_STYLE, (style & ~WS_TABSTOP) | (state.style & WS_TABSTOP));
  }
  return result;
}

void OptionButton::ShowState() {
  if (system_ == nullptr) system_ = PutBefore(this, &Procedure);
  // Unchecking takes a button out of the tab order; while none is chosen, the first one stays in it.
  if (group_.chosen != 0) Send(BM_SETCHECK, group_.chosen == Id() ? BST_CHECKED : BST_UNCHECKED);
}

ListBox::Filling::Filling(ListBox& list) : window_(list.Handle()) { ::SendMessageA(window_, WM_SETREDRAW, FALSE, 0); }

ListBox::Filling::~Filling() {
  if (!::IsWindow(window_)) return;
  ::SendMessageA(window_, WM_SETREDRAW, TRUE, 0);
  ::InvalidateRect(window_, nullptr, TRUE);
}

void ListBox::AddItem(const WideText& text) {
  if (Handle() == nullptr || Show(text)) items_.push_back(text);
}

void ListBox::AddItem(const std::string& ansi) { AddItem(Widen(ansi)); }

// False when the system's list is full.
bool ListBox::Show(const WideText& text) {
  const LRESULT line = UsesWideNames()
                           ? late::SendMessageWide(Handle(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()))
                           : Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Narrow(text).c_str()));
  if (line < 0) return false;
  const int width = TextWidth(Handle(), text) + ::GetSystemMetrics(SM_CXEDGE) * 4;
  if (width <= widest_) return true;
  widest_ = width;
  Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width));
  return true;
}

void ListBox::RemoveItem(int index) {
  if (index < 0 || index >= ListCount()) return;
  items_.erase(items_.begin() + index);
  if (Handle() != nullptr) Send(LB_DELETESTRING, static_cast<WPARAM>(index));
}

std::vector<int> ListBox::Selected() const {
  std::vector<int> lines(static_cast<std::size_t>(std::max<LRESULT>(Send(LB_GETSELCOUNT), 0)));
  const LRESULT count = Send(LB_GETSELITEMS, lines.size(), reinterpret_cast<LPARAM>(lines.data()));
  lines.resize(static_cast<std::size_t>(std::max<LRESULT>(count, 0)));
  return lines;
}

void ListBox::ShowState() {
  widest_ = 0;
  for (const WideText& item : items_) Show(item);
}

void ListBox::Clear() {
  items_.clear();
  widest_ = 0;
  if (Handle() == nullptr) return;
  Send(LB_RESETCONTENT);
  Send(LB_SETHORIZONTALEXTENT, 0);
}

WideText ListBox::Item(int index) const {
  return index >= 0 && index < ListCount() ? items_[static_cast<std::size_t>(index)] : WideText();
}

void ListBox::ShowLast() { Send(LB_SETTOPINDEX, static_cast<WPARAM>(ListCount() - 1)); }

void ComboBox::AddItem(const std::string& text) { Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())); }

void ComboBox::Choose(const std::string& text) {
  Send(CB_SETCURSEL,
       static_cast<WPARAM>(Send(CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()))));
}

void ProgressBar::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  value_ = min;
  ShowState();
}

void ProgressBar::SetValue(int value) {
  if (value < min_ || value > max_) Raise(kInvalidPropertyValue);
  value_ = value;
  Send(PBM_SETPOS, static_cast<WPARAM>(value));
}

void ProgressBar::ShowState() {
  Send(PBM_SETRANGE32, static_cast<WPARAM>(min_), max_);
  Send(PBM_SETPOS, static_cast<WPARAM>(value_));
}

void SpinButton::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  Send(UDM_SETRANGE, 0, MAKELPARAM(max, min));
}

void SpinButton::SetValue(double value) {
  value_ = PropertyValue(value, min_, max_);
  Send(UDM_SETPOS, 0, MAKELPARAM(value_, 0));
  buddy_.SetText(std::to_string(value_));
}

// Each end of the range is the last number.
void SpinButton::Turn(int by) {
  const int number = LOWORD(Send(UDM_GETPOS)) + by;
  if (number >= min_ && number <= max_) Send(UDM_SETPOS, 0, MAKELPARAM(number, 0));
}

// The system's own draws nothing to show that it has the keyboard.
LRESULT CALLBACK SpinButton::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const spin = Of<SpinButton>(window);
  if (spin == nullptr) return ::DefWindowProcA(window, message, wParam, lParam);
  if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
  if (message == WM_KEYDOWN && (wParam == VK_UP || wParam == VK_DOWN)) {
    spin->Turn(wParam == VK_UP ? 1 : -1);
    return 0;
  }
  const LRESULT result = ::CallWindowProcA(spin->system_, window, message, wParam, lParam);
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) ::InvalidateRect(window, nullptr, TRUE);
  if (message == WM_PAINT && ::GetFocus() == window) FrameInHighlight(window);
  return result;
}

void SpinButton::ShowState() {
  if (system_ == nullptr) system_ = PutBefore(this, &Procedure);
  // Setting the position writes it into the buddy, whose text may be another one by now.
  const std::string text = buddy_.Text();
  Send(UDM_SETRANGE, 0, MAKELPARAM(max_, min_));
  Send(UDM_SETPOS, 0, MAKELPARAM(value_, 0));
  buddy_.SetText(text);
}

TimePicker::TimePicker(Dialog& dialog, int id) : Control(dialog, id) { ::GetLocalTime(&time_); }

SYSTEMTIME TimePicker::Time() const {
  SYSTEMTIME time = time_;
  if (Handle() != nullptr) Send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
  return time;
}

void TimePicker::SetTime(const SYSTEMTIME& time) {
  time_ = time;
  if (Handle() != nullptr) ShowState();
}

void TimePicker::ShowState() { Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time_)); }

void TimePicker::SetHour(double hour) {
  SYSTEMTIME time = Time();
  time.wHour = static_cast<WORD>(PropertyValue(hour, 0, 23));
  SetTime(time);
}

void TimePicker::SetMinute(double minute) {
  SYSTEMTIME time = Time();
  time.wMinute = static_cast<WORD>(PropertyValue(minute, 0, 59));
  SetTime(time);
}

void TimePicker::SetSecond(double second) {
  SYSTEMTIME time = Time();
  time.wSecond = static_cast<WORD>(PropertyValue(second, 0, 59));
  SetTime(time);
}

void StatusBar::Arrange(const std::string& firstText) {
  const int first = TextWidth(Handle(), Widen(firstText)) + 4 * ::GetSystemMetrics(SM_CXVSCROLL);
  int edges[] = {first, -1};
  Send(SB_SETPARTS, 2, reinterpret_cast<LPARAM>(edges));
  Send(SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(firstText.c_str()));
}

void StatusBar::SetPanel2(const std::string& text) { Send(SB_SETTEXTA, 1, reinterpret_cast<LPARAM>(text.c_str())); }

void InitControls() {
  INITCOMMONCONTROLSEX controls{
      sizeof controls, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS | ICC_DATE_CLASSES | ICC_WIN95_CLASSES};
  static_assert(sizeof controls == 8, "the record of the first version");
  ::InitCommonControlsEx(&controls);
}

}  // namespace platform
