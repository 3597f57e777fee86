// How much room a control's text takes in the control's own font.
//
// A font belongs to its process, so its description is fetched there and the same font is made here. Wine does not even
// let its handle be asked for from outside.
#pragma once

#include "probe_basics.h"
#include "probe_controls.h"
#include "probe_other_process.h"

#include <windows.h>

#include <string>

inline HFONT sameFont(const OtherProcess& process, HWND window) {
  const DWORD font = process.callUser32("SendMessageW", {reinterpret_cast<DWORD>(window), WM_GETFONT, 0, 0}).value_or(0);
  LOGFONTW description{};
  OtherProcess::Memory memory(process, sizeof description);
  const auto address = reinterpret_cast<DWORD>(memory.address());
  const auto got = process.call("gdi32.dll", "GetObjectW", {font, sizeof description, address});
  if (!got || !*got || !memory.read(&description, sizeof description)) return nullptr;
  return ::CreateFontIndirectW(&description);
}

// textsize WINDOW WIDTH: the text broken into lines of that width, or on one line when WIDTH is 0.
inline std::string textSize(const Words& words) {
  const HWND window = toWindow(words.at(1));
  const int width = static_cast<int>(toNumber(words.at(2)));
  DWORD pid = 0;
  ::GetWindowThreadProcessId(window, &pid);
  const HFONT font = sameFont(OtherProcess(pid), window);
  if (!font) return failure("the font of that control cannot be told");
  Asker ask;
  const std::wstring text = ask.text(window);
  const HDC screen = ::CreateCompatibleDC(nullptr);
  const HGDIOBJ before = ::SelectObject(screen, font);
  RECT room{0, 0, width, 0};
  ::DrawTextW(screen, text.c_str(), static_cast<int>(text.size()), &room,
              DT_CALCRECT | (width ? DT_WORDBREAK | DT_EXPANDTABS : DT_SINGLELINE));
  ::SelectObject(screen, before);
  ::DeleteDC(screen);
  ::DeleteObject(font);
  RECT client{};
  ::GetClientRect(window, &client);
  return json::Object()
      .number("width", text.empty() ? 0 : room.right)
      .number("height", text.empty() ? 0 : room.bottom)
      .raw("client", rectangle(client))
      .done();
}
