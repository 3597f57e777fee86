// Answers the message boxes of this thread as a person would and keeps what they said.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32.h"

struct ShownBox {
  std::string title;
  std::string text;
  int buttons = 0;
};

class MessageBoxUser {
 public:
  explicit MessageBoxUser(int answer = IDOK) {
    boxes_.clear();
    action_ = nullptr;
    answer_ = answer;
    hook_ = ::SetWindowsHookExA(WH_CBT, &OnWindowEvent, nullptr, ::GetCurrentThreadId());
  }
  MessageBoxUser(const MessageBoxUser&) = delete;
  MessageBoxUser& operator=(const MessageBoxUser&) = delete;
  ~MessageBoxUser() { ::UnhookWindowsHookEx(hook_); }

  const std::vector<ShownBox>& Boxes() const { return boxes_; }

  // Their texts.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const ShownBox& box : Boxes()) texts.push_back(box.text);
    return texts;
  }

  // Runs once, while the next one is on the screen.
  void AtTheNext(std::function<void()> action) const { action_ = std::move(action); }

 private:
  static LRESULT CALLBACK OnWindowEvent(int code, WPARAM wParam, LPARAM lParam) {
    const HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && ClassOf(window) == "#32770") Answer(window);
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
  }

  static void Answer(HWND box) {
    ShownBox shown;
    shown.title = TextOf(box);
    ::EnumChildWindows(box, &LookAt, reinterpret_cast<LPARAM>(&shown));
    boxes_.push_back(shown);
    if (const auto action = std::exchange(action_, nullptr)) action();
    ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(answer_), 0);
  }

  static BOOL CALLBACK LookAt(HWND child, LPARAM shownBox) {
    ShownBox& shown = *reinterpret_cast<ShownBox*>(shownBox);
    const bool visible = (::GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) != 0;
    if (visible && ClassOf(child) == "Button") ++shown.buttons;
    if (ClassOf(child) == "Static") shown.text += TextOf(child);  // the static control of the icon has no text
    return TRUE;
  }

  static std::string ClassOf(HWND window) {
    char name[64] = "";
    ::GetClassNameA(window, name, sizeof name);
    return name;
  }

  static std::string TextOf(HWND window) {
    char text[2048] = "";
    ::GetWindowTextA(window, text, sizeof text);
    return text;
  }

  static inline std::vector<ShownBox> boxes_;
  static inline int answer_ = IDOK;
  static inline std::function<void()> action_;
  HHOOK hook_;
};
