// Top-level windows of another thread, as another program's are, and what they were asked to do.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/win32.h"

using namespace platform;

struct Request {
  HWND window;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  friend bool operator==(const Request&, const Request&) = default;
};

// One at a time. Its windows are gone when it ends.
class OtherProgram {
 public:
  OtherProgram() : thread_([this] { Run(); }) { ::WaitForSingleObject(started_, INFINITE); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  ~OtherProgram() {
    ::PostMessageA(control_, WM_QUIT, 0, 0);
    thread_.join();
    ::CloseHandle(started_);
  }

  // On top of the others and not activated. What the screen tells of the keyboard comes late and may still change the order
  // of the windows and the window in front in the middle of a test; the lists below tell what was done at the time.
  HWND Open(const std::string& className, const std::string& title, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE,
            DWORD extendedStyle = 0) {
    HWND window = nullptr;
    Do([&] {
      WNDCLASSA form{};
      form.lpfnWndProc = &Procedure;
      form.hInstance = ::GetModuleHandleA(nullptr);
      form.lpszClassName = className.c_str();
      ::RegisterClassA(&form);
      window = ::CreateWindowExA(extendedStyle, className.c_str(), title.c_str(), style & ~WS_VISIBLE, 100, 80, 320, 240,
                                 nullptr, nullptr, form.hInstance, nullptr);
      if ((style & WS_VISIBLE) != 0) ::ShowWindow(window, SW_SHOWNA);
    });
    return window;
  }

  void Close(HWND window) {
    Do([window] { ::DestroyWindow(window); });
  }

  // Whether a window closes when it is asked to; all do until it is said otherwise. Called in the other thread.
  void CloseWhen(std::function<bool(HWND)> rule) {
    Do([&] { closes_ = std::move(rule); });
  }

  // Runs there, and waits for its end.
  void Do(const std::function<void()>& work) { ::SendMessageA(control_, WM_APP, 0, reinterpret_cast<LPARAM>(&work)); }

  // Runs there while the caller goes on; the work outlives its end.
  void Begin(const std::function<void()>& work) {
    ::SendNotifyMessageA(control_, WM_APP, 0, reinterpret_cast<LPARAM>(&work));
  }

  // Works off what was posted to it.
  void Answer() {
    Do([] {
      MSG message;
      while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    });
  }

  // Every close, command and system command, and every end of a window (WM_DESTROY), in their order.
  std::vector<Request> Requests() const { return Copy(requests_); }

  // The windows that were shown, hidden and activated, each in its order.
  std::vector<HWND> Shown() const { return Copy(shown_); }
  std::vector<HWND> Hidden() const { return Copy(hidden_); }
  std::vector<HWND> Activated() const { return Copy(activated_); }
  void Forget() {
    const std::lock_guard lock(mutex_);
    shown_.clear();
    hidden_.clear();
    activated_.clear();
  }

  // Without the second one of two that follow each other and are the same.
  std::vector<Request> RequestsOnce() const {
    std::vector<Request> once;
    for (const Request& request : Requests())
      if (once.empty() || !(once.back() == request)) once.push_back(request);
    return once;
  }

 private:
  template <class Element>
  std::vector<Element> Copy(const std::vector<Element>& list) const {
    const std::lock_guard lock(mutex_);
    return list;
  }
  template <class Element>
  void Append(std::vector<Element>& list, const Element& element) const {
    const std::lock_guard lock(mutex_);
    list.push_back(element);
  }

  void Run() {
    instance_ = this;
    WNDCLASSA form{};
    form.lpfnWndProc = &Procedure;
    form.hInstance = ::GetModuleHandleA(nullptr);
    form.lpszClassName = "OtherProgram";
    ::RegisterClassA(&form);
    control_ = ::CreateWindowExA(0, "OtherProgram", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, form.hInstance, nullptr);
    ::SetEvent(started_);
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
    ::EnumThreadWindows(::GetCurrentThreadId(), &Destroy, 0);
    instance_ = nullptr;
  }

  static BOOL CALLBACK Destroy(HWND window, LPARAM) {
    ::DestroyWindow(window);
    return TRUE;
  }

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    OtherProgram& program = *instance_;
    if (message == WM_APP) return (*reinterpret_cast<const std::function<void()>*>(lParam))(), 0;
    if (message == WM_SHOWWINDOW) program.Append(wParam != 0 ? program.shown_ : program.hidden_, window);
    if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) program.Append(program.activated_, window);
    if (message == WM_CLOSE || message == WM_COMMAND || message == WM_SYSCOMMAND || message == WM_DESTROY)
      program.Append(program.requests_, Request{window, message, wParam, lParam});
    if (message == WM_COMMAND || (message == WM_CLOSE && !program.closes_(window))) return 0;
    return ::DefWindowProcA(window, message, wParam, lParam);
  }

  static inline OtherProgram* instance_ = nullptr;

  mutable std::mutex mutex_;
  std::vector<Request> requests_;
  std::vector<HWND> shown_;
  std::vector<HWND> hidden_;
  std::vector<HWND> activated_;
  std::function<bool(HWND)> closes_ = [](HWND) { return true; };
  HWND control_ = nullptr;
  HANDLE started_ = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
  std::thread thread_;
};
