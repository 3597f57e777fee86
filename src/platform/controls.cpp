#include "platform/controls.h"

#include <algorithm>

#include "platform/runtime_error.h"
#include "platform/text_value.h"

// The common controls' header needs the lean windows.h before it.
#include <commctrl.h>

namespace {

int TextWidth(HWND window, const std::string& text) {
  const HDC context = ::GetDC(window);
  const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(::SendMessageA(window, WM_GETFONT, 0, 0));
  const HGDIOBJ before = font != nullptr ? ::SelectObject(context, font) : nullptr;
  SIZE size{};
  ::GetTextExtentPoint32A(context, text.data(), static_cast<int>(text.size()), &size);
  if (before != nullptr) ::SelectObject(context, before);
  ::ReleaseDC(window, context);
  return size.cx;
}

// A property's number as the property takes it: whole, from `min` to `max`.
int PropertyValue(double value, int min, int max) {
  if (!(value >= min - 0.5 && value <= max + 0.5)) Raise(kInvalidPropertyValue);
  const int whole = ToInteger(value);
  if (whole < min || whole > max) Raise(kInvalidPropertyValue);
  return whole;
}

}  // namespace

std::string Control::Text() const {
  std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window_)) + 1, '\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextA(window_, text.data(), static_cast<int>(text.size()))));
  return text;
}

void Control::SetText(const std::string& text) { ::SetWindowTextA(window_, text.c_str()); }

void Control::FireClick() const {
  ::SendMessageA(::GetParent(window_), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(window_), BN_CLICKED),
                 reinterpret_cast<LPARAM>(window_));
}

void CheckBox::SetValue(double value) {
  if (value != 0.0 && value != 1.0) Raise(kInvalidPropertyValue);
  Send(BM_SETCHECK, value == 1.0 ? BST_CHECKED : BST_UNCHECKED);
  FireClick();
}

void OptionButton::Choose() {
  // The group is everything between two controls with the group style.
  const HWND dialog = ::GetParent(Handle());
  for (HWND other = ::GetNextDlgGroupItem(dialog, Handle(), FALSE); other != nullptr && other != Handle();
       other = ::GetNextDlgGroupItem(dialog, other, FALSE))
    ::SendMessageA(other, BM_SETCHECK, BST_UNCHECKED, 0);
  Send(BM_SETCHECK, BST_CHECKED);
  FireClick();
}

void ListBox::AddItem(const std::string& text) {
  Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  const int width = TextWidth(Handle(), text) + ::GetSystemMetrics(SM_CXEDGE) * 4;
  if (width <= widest_) return;
  widest_ = width;
  Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width));
}

void ListBox::Clear() {
  Send(LB_RESETCONTENT);
  Send(LB_SETHORIZONTALEXTENT, 0);
  widest_ = 0;
}

std::string ListBox::Item(int index) const {
  const LRESULT length = Send(LB_GETTEXTLEN, static_cast<WPARAM>(index));
  if (length == LB_ERR) return {};
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  Send(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void ListBox::ShowLast() { Send(LB_SETTOPINDEX, static_cast<WPARAM>(ListCount() - 1)); }

void ComboBox::AddItem(const std::string& text) { Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())); }

void ProgressBar::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  value_ = min;
  Send(PBM_SETRANGE32, static_cast<WPARAM>(min), max);
  Send(PBM_SETPOS, static_cast<WPARAM>(min));
}

void ProgressBar::SetValue(int value) {
  if (value < min_ || value > max_) Raise(kInvalidPropertyValue);
  value_ = value;
  Send(PBM_SETPOS, static_cast<WPARAM>(value));
}

void SpinButton::SetRange(int min, int max) {
  min_ = min;
  max_ = max;
  Send(UDM_SETRANGE, 0, MAKELPARAM(max, min));
}

void SpinButton::SetValue(double value) { Send(UDM_SETPOS, 0, MAKELPARAM(PropertyValue(value, min_, max_), 0)); }

SYSTEMTIME TimePicker::Time() const {
  SYSTEMTIME time{};
  Send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
  return time;
}

void TimePicker::SetTime(const SYSTEMTIME& time) { Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time)); }

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
  const int first = TextWidth(Handle(), firstText) + 4 * ::GetSystemMetrics(SM_CXVSCROLL);
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
