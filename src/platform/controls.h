// Small typed wrappers over the controls of a dialog, one member per control under the control's own name.
//
// Two promises that the program relies on: setting a check box's Value fires its Click handler, and so does choosing an
// option button. A panel's window may be created after its controls were set: until then a wrapper keeps what it was
// given, answers from it, and shows it once the window exists.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialog.h"
#include "platform/handles.h"
#include "platform/wide_text.h"

namespace platform {

class Control : public DialogPart {
 public:
  Control(Dialog& dialog, int id);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  HWND Handle() const { return window_; }
  int Id() const { return id_; }

  // A control that is disabled hands the keyboard on to the next one: left where it is, no key would do anything.
  void SetEnabled(bool enabled);

  // The control's own state, whatever its parents show.
  void SetVisible(bool visible);

  std::string Text() const;
  void SetText(const std::string& text);

  // False when the window has not taken the last text.
  bool ShowsItsText() const { return showsItsText_; }

 protected:
  ~Control() = default;
  virtual void ShowState() {}  // what was kept until now, into the control

  HWND Parent() const { return dialog_.Handle(); }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(window_, message, wParam, lParam);
  }
  void FireClick() { dialog_.Click(id_); }
  void IgnoreClicks(bool ignored) { dialog_.IgnoreClicksOf(ignored ? id_ : 0); }

  // Has `procedure` called before the system's own, which is returned. It finds `control` in the window's user data. Null,
  // and the control stays the system's, where the window cannot keep that.
  WNDPROC PutBefore(const void* control, WNDPROC procedure) const;

  // In such a procedure; null where the window does not tell.
  template <class Kind>
  static Kind* Of(HWND window) {
    return reinterpret_cast<Kind*>(::GetWindowLongA(window, GWL_USERDATA));
  }

 private:
  void Attach() final;
  void Detach() final { window_ = nullptr; }

  Dialog& dialog_;
  int id_;
  HWND window_ = nullptr;
  std::optional<bool> enabled_;
  std::optional<bool> visible_;
  std::optional<std::string> text_;
  bool showsItsText_ = true;
};

class Button : public Control {
 public:
  using Control::Control;
};

// A box with the look of a button (BS_PUSHLIKE): it looks pressed while it is marked, and a screen reader says so. A click
// marks nothing by itself.
class MarkedButton : public Button {
 public:
  using Button::Button;
  void Mark(bool marked) { Send(BM_SETCHECK, marked ? BST_CHECKED : BST_UNCHECKED); }

 private:
  void ShowState() override;
  void DrawInHighContrast() const;
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  WNDPROC system_ = nullptr;
};

class Label : public Control {
 public:
  using Control::Control;
};

// A static control that shows a bitmap of the program's resources, in the size that suits the screen.
class Picture : public Control {
 public:
  // By default with the bitmap's grey ground in the dialog's colour of every scheme.
  Picture(Dialog& dialog, int id, int bitmap, UINT loading = LR_LOADMAP3DCOLORS)
      : Control(dialog, id), bitmap_(bitmap), loading_(loading) {}

 private:
  void ShowState() override;
  void OnColours() override { ShowState(); }

  int bitmap_;
  UINT loading_;
  UniqueGdiObject loaded_;
};

class TextBox : public Control {
 public:
  using Control::Control;

  // Whether somebody has typed into it since its text was set.
  bool IsModified() const { return Handle() != nullptr && Send(EM_GETMODIFY) != 0; }
};

class CheckBox : public Control {
 public:
  using Control::Control;
  int Value() const { return Handle() != nullptr ? static_cast<int>(Send(BM_GETCHECK)) : value_; }

  // 0 or 1, and fires Click. Raises 380 for any other number and leaves the box as it is.
  void SetValue(double value);

 private:
  void ShowState() override { Send(BM_SETCHECK, static_cast<WPARAM>(value_)); }
  int value_ = 0;
};

// Which button of a group is chosen while there is no window; 0 for none.
struct OptionGroup {
  int chosen = 0;
};

// The system clicks an option button that gets the keyboard by Tab. Here it is chosen by a click, the blank or an arrow
// alone.
class OptionButton : public Control {
 public:
  OptionButton(Dialog& dialog, int id, OptionGroup& group) : Control(dialog, id), group_(group) {}
  bool Value() const { return Handle() != nullptr ? Send(BM_GETCHECK) == BST_CHECKED : group_.chosen == Id(); }

  // Chooses this button, clears the others of its group and fires Click.
  void Choose();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void ShowState() override;
  std::vector<HWND> Group() const;
  LRESULT TakeKeyboard(WPARAM wParam, LPARAM lParam);

  OptionGroup& group_;
  WNDPROC system_ = nullptr;
};

// The lines are kept in the object as well, and are read from there: a line may be too long for a system to give it back.
// Where the system has wide windows, they show what the ANSI code page lacks.
class ListBox : public Control {
 public:
  using Control::Control;

  // While one lives, the list draws nothing; it draws itself once at the end. For more than a screenful of changes.
  class Filling {
   public:
    explicit Filling(ListBox& list);
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;
    ~Filling();

   private:
    HWND window_;
  };

  void AddItem(const WideText& text);  // and makes the list scroll sideways as far as the text is long
  void AddItem(const std::string& ansi);
  void RemoveItem(int index);  // nothing for a line that is not there
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  WideText Item(int index) const;  // empty for a line that is not there

  // The chosen line, of a list that has one at most; -1 for none. Once the window exists.
  int ListIndex() const { return static_cast<int>(Send(LB_GETCURSEL)); }
  // The chosen lines, in their order, of a list that may have several.
  std::vector<int> Selected() const;
  void Select(int index) { Send(LB_SETCURSEL, static_cast<WPARAM>(index)); }
  void ShowLast();

 private:
  void ShowState() override;
  bool Show(const WideText& text);
  std::deque<WideText> items_;
  int widest_ = 0;  // pixels
};

class ComboBox : public Control {
 public:
  using Control::Control;
  void AddItem(const std::string& text);  // once the window exists

  // Of a list without a box to write in: shows the entry that is the text, case aside. Fires nothing.
  void Choose(const std::string& text);
};

class ProgressBar : public Control {
 public:
  using Control::Control;
  int Max() const { return max_; }
  int Value() const { return value_; }
  void SetRange(int min, int max);

  // Raises 380 outside Min to Max.
  void SetValue(int value);

 private:
  void ShowState() override;
  int min_ = 0;
  int max_ = 100;
  int value_ = 0;
};

// The arrow keys turn it while it has the keyboard itself, so that its number can be changed also where its buddy is
// disabled.
class SpinButton : public Control {
 public:
  SpinButton(Dialog& dialog, int id, TextBox& buddy) : Control(dialog, id), buddy_(buddy) {}
  void SetRange(int min, int max);

  // Also writes the number into the buddy. Raises 380 outside the range.
  void SetValue(double value);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void ShowState() override;
  void Turn(int by);
  TextBox& buddy_;
  WNDPROC system_ = nullptr;
  int min_ = 0;
  int max_ = 100;
  int value_ = 0;
};

class TimePicker : public Control {
 public:
  TimePicker(Dialog& dialog, int id);
  int Hour() const { return Time().wHour; }
  int Minute() const { return Time().wMinute; }
  int Second() const { return Time().wSecond; }

  // Raise 380 for a number that no clock shows.
  void SetHour(double hour);
  void SetMinute(double minute);
  void SetSecond(double second);

 private:
  void ShowState() override;
  SYSTEMTIME Time() const;
  void SetTime(const SYSTEMTIME& time);
  SYSTEMTIME time_;
};

class StatusBar : public Control {
 public:
  using Control::Control;

  // Two panels; the first is as wide as its text needs. Once the window exists.
  void Arrange(const std::string& firstText);
  void SetPanel2(const std::string& text);
};

// Loads what the controls above are made of; before the first window.
void InitControls();

}  // namespace platform
