// How much room a control's text takes in the control's own font.
//
// A font belongs to its process, so its description is fetched there and the same font is made here.
#pragma once

#include "probe_basics.h"
#include "probe_controls.h"
#include "probe_other_process.h"

#include <windows.h>

#include <string>

inline HFONT sameFont(const OtherProcess& process, DWORD font) {
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
  Asker ask;
  const DWORD itsFont = ask.send(window, WM_GETFONT).value_or(0);
  const HFONT font = itsFont ? sameFont(OtherProcess(pid), itsFont) : nullptr;
  const std::wstring text = ask.text(window);
  const HDC screen = ::CreateCompatibleDC(nullptr);
  const HGDIOBJ before = ::SelectObject(screen, font ? font : ::GetStockObject(SYSTEM_FONT));
  RECT room{0, 0, width, 0};
  ::DrawTextW(screen, text.c_str(), static_cast<int>(text.size()), &room,
              DT_CALCRECT | (width ? DT_WORDBREAK | DT_EXPANDTABS : DT_SINGLELINE));
  ::SelectObject(screen, before);
  ::DeleteDC(screen);
  if (font) ::DeleteObject(font);
  RECT client{};
  ::GetClientRect(window, &client);
  return json::Object()
      .flag("own_font", font != nullptr)
      .number("width", text.empty() ? 0 : room.right)
      .number("height", text.empty() ? 0 : room.bottom)
      .raw("client", rectangle(client))
      .done();
}
