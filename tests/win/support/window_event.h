// A window event that waits in the queue of this thread until somebody lets events run.
#pragma once

#include <functional>
#include <utility>

#include "platform/win32.h"

using namespace platform;

// One at a time. What has not run when the object goes never does.
class WindowEvents {
 public:
  WindowEvents() = default;
  WindowEvents(const WindowEvents&) = delete;
  WindowEvents& operator=(const WindowEvents&) = delete;
  ~WindowEvents() { action_ = nullptr; }

  // `action` runs once, when events run next.
  void AtTheNext(std::function<void()> action) const {
    action_ = std::move(action);
    MSG message;
    ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // gives the thread a queue
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(&Run));
  }

  // Whether none waits any longer.
  bool HasRun() const { return !action_; }

 private:
  static void CALLBACK Run(HWND, UINT, UINT_PTR, DWORD) {
    if (const auto action = std::exchange(action_, nullptr)) action();
  }

  static inline std::function<void()> action_;
};

// Long work looks for window events only so often (message_pump.cpp): after this, at its next step.
inline void LetTheNextLookBeDue() {
  for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < 50;) ::Sleep(1);
}
