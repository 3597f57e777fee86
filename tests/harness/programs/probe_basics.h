// What every part of the probe uses: words of a command, handles and rectangles as JSON.
#pragma once

#include "probe_json.h"

#include <windows.h>

#include <string>
#include <vector>

using Words = std::vector<std::wstring>;

inline std::string hexHandle(HWND window) { return std::to_string(reinterpret_cast<DWORD>(window)); }

inline long long toNumber(const std::wstring& word) { return std::stoll(word, nullptr, 0); }

inline HWND toWindow(const std::wstring& word) { return reinterpret_cast<HWND>(static_cast<DWORD>(toNumber(word))); }

inline std::string failure(const std::string& what) {
  return json::Object().text("error", std::wstring(what.begin(), what.end())).done();
}

inline std::string rectangle(const RECT& r) {
  return json::Array()
      .add(std::to_string(r.left))
      .add(std::to_string(r.top))
      .add(std::to_string(r.right))
      .add(std::to_string(r.bottom))
      .done();
}

inline std::string windowRectangle(HWND window) {
  RECT r{};
  ::GetWindowRect(window, &r);
  return rectangle(r);
}

inline std::wstring className(HWND window) {
  wchar_t name[256] = L"";
  ::GetClassNameW(window, name, 256);
  return name;
}

inline bool same(const std::wstring& a, const wchar_t* b) { return ::lstrcmpiW(a.c_str(), b) == 0; }
