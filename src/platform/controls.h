// Small typed wrappers over the controls of a dialog, one object per control under the control's own name.
//
// Two promises that the program relies on: setting a check box's Value fires its Click handler, and so does choosing an
// option button. A wrapper that is not attached to a window does nothing and reads as empty.
#pragma once

#include <string>

#include "platform/win32.h"

class Control {
 public:
  void Attach(HWND dialog, int id) { window_ = ::GetDlgItem(dialog, id); }
  HWND Handle() const { return window_; }

  bool Enabled() const { return ::IsWindowEnabled(window_) != 0; }
  void SetEnabled(bool enabled) { ::EnableWindow(window_, enabled); }

  // The control's own state, whatever its parents show.
  bool Visible() const { return (::GetWindowLongA(window_, GWL_STYLE) & WS_VISIBLE) != 0; }
  void SetVisible(bool visible) { ::ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE); }

  std::string Text() const;
  void SetText(const std::string& text);

 protected:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(window_, message, wParam, lParam);
  }
  void FireClick() const;

 private:
  HWND window_ = nullptr;
};

class Button : public Control {};
class Label : public Control {};
class TextBox : public Control {};

class CheckBox : public Control {
 public:
  int Value() const { return static_cast<int>(Send(BM_GETCHECK)); }

  // 0 or 1, and fires Click. Raises 380 for any other number and leaves the box as it is.
  void SetValue(double value);
};

class OptionButton : public Control {
 public:
  bool Value() const { return Send(BM_GETCHECK) == BST_CHECKED; }

  // Chooses this button, clears the others of its group and fires Click.
  void Choose();
};

class ListBox : public Control {
 public:
  void AddItem(const std::string& text);  // and makes the list scroll sideways as far as the text is long
  void Clear();
  int ListCount() const { return static_cast<int>(Send(LB_GETCOUNT)); }
  std::string Item(int index) const;
  void ShowLast();

 private:
  int widest_ = 0;  // pixels
};

class ComboBox : public Control {
 public:
  void AddItem(const std::string& text);
};

class ProgressBar : public Control {
 public:
  int Min() const { return min_; }
  int Max() const { return max_; }
  int Value() const { return value_; }
  void SetRange(int min, int max);

  // Raises 380 outside Min to Max.
  void SetValue(int value);

 private:
  int min_ = 0;
  int max_ = 100;
  int value_ = 0;
};

class SpinButton : public Control {
 public:
  void SetRange(int min, int max);

  // Also writes the number into the buddy. Raises 380 outside the range.
  void SetValue(double value);

 private:
  int min_ = 0;
  int max_ = 100;
};

class TimePicker : public Control {
 public:
  int Hour() const { return Time().wHour; }
  int Minute() const { return Time().wMinute; }
  int Second() const { return Time().wSecond; }

  // Raise 380 for a number that no clock shows.
  void SetHour(double hour);
  void SetMinute(double minute);
  void SetSecond(double second);

 private:
  SYSTEMTIME Time() const;
  void SetTime(const SYSTEMTIME& time);
};

class StatusBar : public Control {
 public:
  // Two panels; the first is as wide as its text needs.
  void Arrange(const std::string& firstText);
  void SetPanel2(const std::string& text);
};

// Loads what the controls above are made of; before the first window.
void InitControls();
