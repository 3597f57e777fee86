// The windows of the screen, from the top down.
#pragma once

#include "probe_basics.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <vector>

inline std::string describeTopWindow(HWND window, int z) {
  DWORD pid = 0;
  const DWORD thread = ::GetWindowThreadProcessId(window, &pid);
  wchar_t title[512] = L"";
  // The title that the window manager keeps: no message, so a hung program cannot hold this up.
  ::InternalGetWindowText(window, title, 512);
  return json::Object()
      .raw("hwnd", hexHandle(window))
      .text("class", className(window))
      .text("title", title)
      .number("pid", pid)
      .number("tid", thread)
      .flag("visible", ::IsWindowVisible(window))
      .flag("iconic", ::IsIconic(window))
      .flag("enabled", ::IsWindowEnabled(window))
      .raw("rect", windowRectangle(window))
      .raw("owner", hexHandle(::GetWindow(window, GW_OWNER)))
      .number("style", static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)))
      .number("exstyle", static_cast<DWORD>(::GetWindowLongA(window, GWL_EXSTYLE)))
      .number("z", z)
      .done();
}

inline BOOL CALLBACK collect(HWND window, LPARAM into) {
  reinterpret_cast<std::vector<HWND>*>(into)->push_back(window);
  return TRUE;
}

inline std::vector<HWND> topWindows() {
  std::vector<HWND> found;
  ::EnumWindows(collect, reinterpret_cast<LPARAM>(&found));
  return found;
}

inline std::vector<HWND> descendants(HWND window) {
  std::vector<HWND> found;
  ::EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&found));
  return found;
}

// All windows from the top down, or only those of one class: the system finds them, for to ask each window for its class
// takes many times as long.
inline std::string windows(const Words& words) {
  json::Array all;
  const std::vector<HWND> fromTheTop = topWindows();
  const auto add = [&](HWND window) {
    const auto place = std::find(fromTheTop.begin(), fromTheTop.end(), window);
    if (place != fromTheTop.end()) all.add(describeTopWindow(window, static_cast<int>(place - fromTheTop.begin())));
  };
  if (words.size() < 2)
    for (const HWND window : fromTheTop) add(window);
  else
    for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, words[1].c_str(), nullptr)) != nullptr;)
      add(window);
  return all.done();
}

// The uppermost window of a class.
inline std::string top(const Words& words) {
  return json::Object().raw("hwnd", hexHandle(::FindWindowExW(nullptr, nullptr, words.at(1).c_str(), nullptr))).done();
}

// The window that a user sees at a place. A tip goes away when the mouse comes.
inline std::string windowAt(const Words& words) {
  const POINT place{static_cast<LONG>(toNumber(words.at(1))), static_cast<LONG>(toNumber(words.at(2)))};
  int z = -1;
  for (const HWND window : topWindows()) {
    RECT r{};
    if (++z, ::IsWindowVisible(window) && !::IsIconic(window) && ::GetWindowRect(window, &r) && ::PtInRect(&r, place) &&
                 !same(className(window), TOOLTIPS_CLASSW))
      return describeTopWindow(window, z);
  }
  return "null";
}
