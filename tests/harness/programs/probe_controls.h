// What a control of another process shows, kind by kind.
#pragma once

#include "probe_basics.h"
#include "probe_other_process.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

constexpr UINT kQueryTimeout = 2000;
constexpr int kItemsInOverview = 100;

// Messages to other processes, none of which can hold the probe up: a thread that let one time out is not asked again.
class Asker {
 public:
  std::optional<DWORD> send(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) {
    const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
    if (m_silent.count(thread)) return std::nullopt;
    DWORD_PTR result = 0;
    ::SetLastError(0);
    if (::SendMessageTimeoutW(window, message, w, l, SMTO_NORMAL, kQueryTimeout, &result)) return static_cast<DWORD>(result);
    if (::IsWindow(window)) m_silent.insert(thread);
    return std::nullopt;
  }

  std::wstring text(HWND window) {
    std::wstring out(1024, L'\0');
    for (;;) {
      const auto got = send(window, WM_GETTEXT, out.size(), reinterpret_cast<LPARAM>(out.data())).value_or(0);
      if (got + 1 < out.size()) {
        out.resize(got);
        return out;
      }
      out.resize(out.size() * 16);  // there may be more
    }
  }

  bool everyoneAnswered() const { return m_silent.empty(); }

 private:
  std::set<DWORD> m_silent;
};

// One message a line: Windows asks for a line's length itself, and with thousands of lines each message counts.
inline std::optional<std::wstring> itemText(Asker& ask, HWND list, UINT message, int index) {
  static std::wstring buffer(4 << 20, L'\0');  // longer than any line
  const auto got = ask.send(list, message, index, reinterpret_cast<LPARAM>(buffer.data()));
  if (!got || static_cast<int>(*got) < 0) return std::nullopt;
  return buffer.substr(0, *got);
}

inline std::string itemsFrom(Asker& ask, HWND list, bool combo, int first, int last) {
  json::Array items;
  for (int i = first; i < last; ++i) {
    const auto text = itemText(ask, list, combo ? CB_GETLBTEXT : LB_GETTEXT, i);
    if (!text) break;
    items.add(json::quoted(*text));
  }
  return items.done();
}

inline void describeButton(Asker& ask, HWND window, json::Object& out) {
  const auto checked = ask.send(window, BM_GETCHECK);
  if (checked) out.number("check", *checked);
}

inline void describeList(Asker& ask, HWND window, json::Object& out) {
  const int count = static_cast<int>(ask.send(window, LB_GETCOUNT).value_or(0));
  out.number("count", count);
  out.raw("items", itemsFrom(ask, window, false, 0, std::min(count, kItemsInOverview)));
  out.number("selected", static_cast<int>(ask.send(window, LB_GETCURSEL).value_or(static_cast<DWORD>(LB_ERR))));
  out.number("top", static_cast<int>(ask.send(window, LB_GETTOPINDEX).value_or(0)));
  json::Array chosen;
  if (::GetWindowLongA(window, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) {
    std::vector<int> lines(count);
    lines.resize(ask.send(window, LB_GETSELITEMS, lines.size(), reinterpret_cast<LPARAM>(lines.data())).value_or(0));
    for (const int line : lines) chosen.add(std::to_string(line));
  }
  out.raw("chosen", chosen.done());
}

inline void describeCombo(Asker& ask, HWND window, json::Object& out) {
  const int count = static_cast<int>(ask.send(window, CB_GETCOUNT).value_or(0));
  out.number("count", count);
  out.raw("items", itemsFrom(ask, window, true, 0, std::min(count, kItemsInOverview)));
  out.number("selected", static_cast<int>(ask.send(window, CB_GETCURSEL).value_or(static_cast<DWORD>(CB_ERR))));
  out.flag("dropped", ask.send(window, CB_GETDROPPEDSTATE).value_or(0) != 0);
}

inline void describeProgress(Asker& ask, HWND window, json::Object& out) {
  out.number("min", static_cast<int>(ask.send(window, PBM_GETRANGE, TRUE).value_or(0)));
  out.number("max", static_cast<int>(ask.send(window, PBM_GETRANGE, FALSE).value_or(0)));
  out.number("pos", static_cast<int>(ask.send(window, PBM_GETPOS).value_or(0)));
}

inline void describeStatusBar(Asker& ask, HWND window, const OtherProcess& process, json::Object& out) {
  const auto part = [&](int index) -> std::wstring {
    const auto length = LOWORD(ask.send(window, SB_GETTEXTLENGTHW, index).value_or(0));
    OtherProcess::Memory memory(process, (length + 2) * sizeof(wchar_t));
    if (!ask.send(window, SB_GETTEXTW, index, reinterpret_cast<LPARAM>(memory.address()))) {
      memory.keep();
      return {};
    }
    return memory.text();
  };
  const bool simple = ask.send(window, SB_ISSIMPLE).value_or(0) != 0;
  const int count = static_cast<int>(ask.send(window, SB_GETPARTS).value_or(0));
  json::Array parts;
  for (int i = 0; i < count && ask.everyoneAnswered(); ++i) parts.add(json::quoted(part(i)));
  out.raw("parts", parts.done()).flag("simple", simple);
  if (simple) out.text("simple_text", part(SB_SIMPLEID));
}

inline void describeDatePicker(Asker& ask, HWND window, const OtherProcess& process, json::Object& out) {
  OtherProcess::Memory memory(process, sizeof(SYSTEMTIME));
  const auto kind = ask.send(window, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(memory.address()));
  if (!kind) {
    memory.keep();
    return;
  }
  SYSTEMTIME t{};
  if (*kind != GDT_VALID || !memory.read(&t, sizeof t)) {
    out.raw("time", "null");
    return;
  }
  out.raw("time", json::Object()
                      .number("year", t.wYear)
                      .number("month", t.wMonth)
                      .number("day", t.wDay)
                      .number("hour", t.wHour)
                      .number("minute", t.wMinute)
                      .number("second", t.wSecond)
                      .done());
}

inline void describeUpDown(Asker& ask, HWND window, json::Object& out) {
  // The 16-bit messages, because they carry no pointers.
  const DWORD range = ask.send(window, UDM_GETRANGE).value_or(0);
  out.number("min", static_cast<short>(HIWORD(range)));
  out.number("max", static_cast<short>(LOWORD(range)));
  out.number("pos", static_cast<short>(LOWORD(ask.send(window, UDM_GETPOS).value_or(0))));
  out.number("buddy", ask.send(window, UDM_GETBUDDY).value_or(0));
}

// The cells of the first lines, of which each has at most two.
inline void describeReport(Asker& ask, HWND window, const OtherProcess& process, json::Object& out) {
  constexpr int kCharacters = 1024;
  const int count = static_cast<int>(ask.send(window, LVM_GETITEMCOUNT).value_or(0));
  json::Array lines;
  for (int line = 0; line < std::min(count, kItemsInOverview) && ask.everyoneAnswered(); ++line) {
    json::Array cells;
    for (int column = 0; column < 2; ++column) {
      OtherProcess::Memory text(process, kCharacters * sizeof(wchar_t));
      OtherProcess::Memory record(process, sizeof(LVITEMW));
      LVITEMW item{};
      item.iSubItem = column;
      item.pszText = static_cast<wchar_t*>(text.address());
      item.cchTextMax = kCharacters;
      if (!record.write(&item, sizeof item) ||
          !ask.send(window, LVM_GETITEMTEXTW, line, reinterpret_cast<LPARAM>(record.address()))) {
        text.keep();
        record.keep();
        break;
      }
      cells.add(json::quoted(text.text()));
    }
    lines.add(cells.done());
  }
  out.number("count", count).raw("lines", lines.done());
}

inline std::string describeControl(Asker& ask, HWND window) {
  const std::wstring kind = className(window);
  const LONG style = ::GetWindowLongA(window, GWL_STYLE);
  DWORD pid = 0;
  ::GetWindowThreadProcessId(window, &pid);
  json::Object out;
  out.raw("hwnd", hexHandle(window));
  out.raw("parent", hexHandle(::GetAncestor(window, GA_PARENT)));
  out.raw("root", hexHandle(::GetAncestor(window, GA_ROOT)));
  out.text("class", kind);
  out.number("id", ::GetDlgCtrlID(window));
  out.number("pid", pid);
  out.flag("visible", ::IsWindowVisible(window));
  out.flag("own_visible", style & WS_VISIBLE);
  out.flag("enabled", ::IsWindowEnabled(window));
  out.flag("own_enabled", !(style & WS_DISABLED));
  out.raw("rect", windowRectangle(window));
  out.number("style", static_cast<DWORD>(style));
  out.number("exstyle", static_cast<DWORD>(::GetWindowLongA(window, GWL_EXSTYLE)));
  out.text("text", ask.text(window));
  if (same(kind, L"Button"))
    describeButton(ask, window, out);
  else if (same(kind, L"ListBox") || same(kind, L"ComboLBox"))
    describeList(ask, window, out);
  else if (same(kind, L"ComboBox"))
    describeCombo(ask, window, out);
  else if (same(kind, PROGRESS_CLASSW))
    describeProgress(ask, window, out);
  else if (same(kind, UPDOWN_CLASSW))
    describeUpDown(ask, window, out);
  else if (same(kind, WC_LISTVIEWW))
    describeReport(ask, window, OtherProcess(pid), out);
  else if (same(kind, STATUSCLASSNAMEW))
    describeStatusBar(ask, window, OtherProcess(pid), out);
  else if (same(kind, DATETIMEPICK_CLASSW))
    describeDatePicker(ask, window, OtherProcess(pid), out);
  out.flag("answered", ask.everyoneAnswered());
  return out.done();
}
