// The eyes of the tests inside Windows: sits on the desktop of the program under test, reads one command per line and
// answers each with one line of JSON.
//
// It never reads the keyboard by GetAsyncKeyState: that call uses up the "pressed since the last call" mark, which is
// kept once per desktop and which the program under test waits for.
#include "probe_controls.h"
#include "probe_drop.h"
#include "probe_looks.h"
#include "probe_processes.h"
#include "probe_registry.h"
#include "probe_resources.h"
#include "probe_windows.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <cwctype>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>

namespace {

HDESK probesDesktop = nullptr;

// All of a window's controls, or only those of one class.
std::string controls(const Words& words) {
  Asker ask;
  json::Array all;
  for (const HWND child : descendants(toWindow(words.at(1))))
    if (words.size() < 3 || same(className(child), words[2].c_str())) all.add(describeControl(ask, child));
  return all.done();
}

std::string control(const Words& words) {
  const HWND window = toWindow(words.at(1));
  if (!::IsWindow(window)) return failure("no such window");
  Asker ask;
  return describeControl(ask, window);
}

// The controls of windows on show by their ids, as they were found: to look through hundreds of controls takes hundreds of
// times as long as to see that one is still where it was. A window that is still hidden may not have all of its controls
// yet.
std::map<HWND, std::map<int, std::vector<HWND>>> knownControls;

std::map<int, std::vector<HWND>> controlsById(HWND root) {
  std::map<int, std::vector<HWND>> found;
  std::map<HWND, bool> isComboBox;
  for (const HWND child : descendants(root)) {
    const HWND parent = ::GetAncestor(child, GA_PARENT);
    const auto [place, isNew] = isComboBox.try_emplace(parent);
    if (isNew) place->second = same(className(parent), L"ComboBox");
    // A combo box's own edit box has an id that the program gives to another control.
    if (!place->second) found[::GetDlgCtrlID(child)].push_back(child);
  }
  return found;
}

std::vector<HWND> controlsWithId(HWND root, int id) {
  std::map<int, std::vector<HWND>>& known = knownControls[root];
  const auto before = known.find(id);
  const auto isThere = [&](HWND control) {
    return ::GetDlgCtrlID(control) == id && ::GetAncestor(control, GA_ROOT) == root;
  };
  if (before != known.end() && std::all_of(before->second.begin(), before->second.end(), isThere)) return before->second;
  const bool isComplete = ::IsWindowVisible(root);
  known = controlsById(root);
  const auto found = known.find(id);
  const std::vector<HWND> all = found == known.end() ? std::vector<HWND>() : found->second;
  if (!isComplete) known.clear();
  return all;
}

std::string withId(const Words& words) {
  json::Array found;
  for (const HWND control : controlsWithId(toWindow(words.at(1)), static_cast<int>(toNumber(words.at(2)))))
    found.add(json::Object()
                  .raw("hwnd", hexHandle(control))
                  .text("class", className(control))
                  .flag("visible", ::IsWindowVisible(control))
                  .done());
  return found.done();
}

// ROOT ID: the one control with an id, or the one of them that is on show. ROOT is a window, or the class of the uppermost
// one.
std::string aboutControl(const Words& words, const std::function<std::string(HWND)>& tell) {
  const bool isHandle = std::iswdigit(words.at(1).at(0)) != 0;
  const HWND root = isHandle ? toWindow(words[1]) : ::FindWindowExW(nullptr, nullptr, words[1].c_str(), nullptr);
  const std::vector<HWND> found = root ? controlsWithId(root, static_cast<int>(toNumber(words.at(2)))) : std::vector<HWND>();
  if (found.size() == 1) return tell(found[0]);
  std::vector<HWND> onShow;
  std::copy_if(found.begin(), found.end(), std::back_inserter(onShow), ::IsWindowVisible);
  if (onShow.size() == 1) return tell(onShow[0]);
  return json::Object().raw("root", hexHandle(root)).number("found", found.size()).number("shown", onShow.size()).done();
}

std::string handleOf(const Words& words) {
  return aboutControl(words, [](HWND control) { return json::Object().raw("hwnd", hexHandle(control)).done(); });
}

std::string controlOf(const Words& words) {
  return aboutControl(words, [](HWND control) {
    Asker ask;
    return describeControl(ask, control);
  });
}

std::string items(const Words& words) {
  const HWND list = toWindow(words.at(1));
  const bool combo = same(className(list), L"ComboBox");
  Asker ask;
  const int count = static_cast<int>(ask.send(list, combo ? CB_GETCOUNT : LB_GETCOUNT).value_or(0));
  const int first = words.size() > 2 ? static_cast<int>(toNumber(words[2])) : 0;
  return json::Object()
      .number("count", count)
      .raw("items", itemsFrom(ask, list, combo, first, count))
      .flag("answered", ask.everyoneAnswered())
      .done();
}

std::string itemRectangle(const Words& words) {
  const HWND list = toWindow(words.at(1));
  RECT r{};
  Asker ask;
  const auto got = ask.send(list, LB_GETITEMRECT, toNumber(words.at(2)), reinterpret_cast<LPARAM>(&r));
  if (!got || static_cast<int>(*got) == LB_ERR) return failure("no such item");
  ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&r), 2);
  RECT client{};
  ::GetClientRect(list, &client);
  ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&client), 2);
  return json::Object().raw("rect", rectangle(r)).raw("client", rectangle(client)).done();
}

// The window of the screen that has to have the keyboard for `front` to get it; Wine keeps it as a property. While a menu
// of a hidden window is open, that is the menu.
DWORD screenWindow(HWND front) {
  const DWORD thread = ::GetWindowThreadProcessId(front, nullptr);
  for (const HWND other : topWindows()) {
    if (::IsWindowVisible(front)) break;
    if (::IsWindowVisible(other) && ::GetWindowThreadProcessId(other, nullptr) == thread) front = other;
  }
  return static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(::GetPropA(front, "__wine_x11_whole_window")));
}

std::string threadFocus(const Words&) {
  const HWND front = ::GetForegroundWindow();
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  json::Object out;
  out.raw("foreground", hexHandle(front));
  out.number("screen", front ? screenWindow(front) : 0);
  if (front && ::GetGUIThreadInfo(::GetWindowThreadProcessId(front, nullptr), &info))
    out.raw("hwnd", hexHandle(info.hwndFocus))
        .raw("active", hexHandle(info.hwndActive))
        .raw("capture", hexHandle(info.hwndCapture))
        .raw("menu_owner", hexHandle(info.hwndMenuOwner))
        .number("id", info.hwndFocus ? ::GetDlgCtrlID(info.hwndFocus) : 0)
        .text("class", info.hwndFocus ? className(info.hwndFocus) : L"")
        .flag("in_menu", info.flags & GUI_INMENUMODE);
  else
    out.raw("hwnd", "0");
  return out.done();
}

std::string foreground(const Words&) {
  const HWND front = ::GetForegroundWindow();
  return front ? describeTopWindow(front, -1) : "null";
}

std::string post(const Words& words) {
  const BOOL done = ::PostMessageA(toWindow(words.at(1)), static_cast<UINT>(toNumber(words.at(2))),
                                   static_cast<WPARAM>(toNumber(words.at(3))), static_cast<LPARAM>(toNumber(words.at(4))));
  return json::Object().flag("posted", done).done();
}

std::string send(const Words& words) {
  LARGE_INTEGER rate{}, before{}, after{};
  ::QueryPerformanceFrequency(&rate);
  ::QueryPerformanceCounter(&before);
  DWORD_PTR result = 0;
  ::SetLastError(0);
  const bool answered =
      ::SendMessageTimeoutA(toWindow(words.at(1)), static_cast<UINT>(toNumber(words.at(2))),
                            static_cast<WPARAM>(toNumber(words.at(3))), static_cast<LPARAM>(toNumber(words.at(4))),
                            SMTO_NORMAL, static_cast<UINT>(toNumber(words.at(5))), &result) != 0;
  const DWORD error = ::GetLastError();
  ::QueryPerformanceCounter(&after);
  const double ms = 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(rate.QuadPart);
  return json::Object()
      .raw("ms", std::to_string(ms))
      .flag("answered", answered)
      .flag("timed_out", !answered && (error == ERROR_TIMEOUT || ::IsWindow(toWindow(words.at(1)))))
      .number("result", static_cast<int>(result))
      .done();
}

struct Sending {
  HWND window;
  UINT message;
  WPARAM wParam;
};

DWORD WINAPI sendOne(void* what) {
  const auto sending = std::unique_ptr<Sending>(static_cast<Sending*>(what));
  ::SetThreadDesktop(probesDesktop);
  ::SendMessageA(sending->window, sending->message, sending->wParam, 0);
  return 0;
}

// Sends a message so many times, each when the window is done with the one before: while it is at work with something that
// the message has started, which shows as a disabled window or an enabled control, it takes the next one meanwhile.
std::string sendEach(const Words& words) {
  const Sending sending{toWindow(words.at(1)), static_cast<UINT>(toNumber(words.at(2))),
                        static_cast<WPARAM>(toNumber(words.at(3)))};
  const HWND shows = toWindow(words.at(5));
  const auto atWork = [&] { return !::IsWindowEnabled(sending.window) || ::IsWindowEnabled(shows); };
  constexpr DWORD kLongest = 60000;
  for (long long left = toNumber(words.at(4)); left > 0; --left) {
    const bool before = atWork();
    const HANDLE thread = ::CreateThread(nullptr, 0, &sendOne, new Sending(sending), 0, nullptr);
    if (!thread) return failure("no thread to send from");
    const DWORD begin = ::GetTickCount();
    bool late = false;
    while (::WaitForSingleObject(thread, 1) == WAIT_TIMEOUT && (before || !atWork()) && !late)
      late = ::GetTickCount() - begin > kLongest;
    ::CloseHandle(thread);
    if (late) return failure("the window does not answer");
  }
  return json::Object().flag("at_work", atWork()).done();
}

// What another program can do to a window without asking it.
std::string show(const Words& words) {
  ::ShowWindow(toWindow(words.at(1)), static_cast<int>(toNumber(words.at(2))));
  return json::Object().flag("visible", ::IsWindowVisible(toWindow(words.at(1)))).done();
}

std::string setText(const Words& words) {
  Asker ask;
  const auto done = ask.send(toWindow(words.at(1)), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(words.at(2).c_str()));
  return json::Object().flag("set", done.value_or(0) != 0).done();
}

// Asks a window to paint one of its pixels. It does so only when no input is left in its queue.
std::string invalidate(const Words& words) {
  const RECT corner{0, 0, 1, 1};
  return json::Object()
      .flag("done", ::RedrawWindow(toWindow(words.at(1)), &corner, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN))
      .done();
}

std::string waitsForPaint(const Words& words) {
  RECT left{};
  return json::Object().flag("waits", ::GetUpdateRect(toWindow(words.at(1)), &left, FALSE)).done();
}

std::string input(const Words&) {
  LASTINPUTINFO last{};
  last.cbSize = sizeof last;
  ::GetLastInputInfo(&last);
  POINT cursor{};
  ::GetCursorPos(&cursor);
  const auto down = [](int key) { return (::GetAsyncKeyState(key) & 0x8000) != 0; };
  return json::Object()
      .number("now", ::GetTickCount())
      .number("last", last.dwTime)
      .number("x", cursor.x)
      .number("y", cursor.y)
      .flag("left", down(VK_LBUTTON))
      .flag("right", down(VK_RBUTTON))
      .flag("ctrl", down(VK_CONTROL))
      .flag("alt", down(VK_MENU))
      .flag("shift", down(VK_SHIFT))
      .done();
}

std::string menu(const Words& words) {
  const HWND window = toWindow(words.at(1));
  DWORD pid = 0;
  ::GetWindowThreadProcessId(window, &pid);
  Asker ask;
  constexpr UINT kGetMenuHandle = 0x01E1;
  const DWORD handle = ask.send(window, kGetMenuHandle).value_or(0);
  const OtherProcess process(pid);
  const auto count = process.callUser32("GetMenuItemCount", {handle});
  if (!handle || !count || static_cast<int>(*count) < 0) return failure("that window shows no menu that can be read");
  const DWORD byDefault = process.callUser32("GetMenuDefaultItem", {handle, TRUE, 0}).value_or(~0U);
  json::Array all;
  for (DWORD i = 0; i < *count; ++i) {
    OtherProcess::Memory text(process, 512 * sizeof(wchar_t));
    OtherProcess::Memory rect(process, sizeof(RECT));
    const auto address = [](const OtherProcess::Memory& m) { return reinterpret_cast<DWORD>(m.address()); };
    const DWORD state = process.callUser32("GetMenuState", {handle, i, MF_BYPOSITION}).value_or(0);
    process.callUser32("GetMenuStringW", {handle, i, address(text), 511, MF_BYPOSITION});
    process.callUser32("GetMenuItemRect", {0, handle, i, address(rect)});
    RECT r{};
    rect.read(&r, sizeof r);
    all.add(json::Object()
                .text("text", text.text())
                .number("id", static_cast<int>(process.callUser32("GetMenuItemID", {handle, i}).value_or(0)))
                .raw("rect", rectangle(r))
                .flag("enabled", !(state & (MF_GRAYED | MF_DISABLED)))
                .flag("checked", state & MF_CHECKED)
                .flag("separator", state & MF_SEPARATOR)
                .flag("default", i == byDefault)
                .done());
  }
  return json::Object().number("handle", handle).raw("items", all.done()).done();
}

// Which of the four stock icons a static control shows: the stock ones are shared, one handle per process.
std::string stockIcon(const Words& words) {
  const HWND window = toWindow(words.at(1));
  DWORD pid = 0;
  ::GetWindowThreadProcessId(window, &pid);
  const OtherProcess process(pid);
  Asker ask;
  const DWORD shown = ask.send(window, STM_GETICON).value_or(0);
  const std::pair<DWORD, const wchar_t*> stock[] = {
      {32513, L"error"}, {32514, L"question"}, {32515, L"warning"}, {32516, L"information"}};
  for (const auto& [id, name] : stock)
    if (shown && process.callUser32("LoadIconW", {0, id}) == shown) return json::Object().text("icon", name).done();
  return json::Object().raw("icon", shown ? "\"other\"" : "null").done();
}

// Takes another program's notification icon away, as a taskbar that went down does.
std::string dropIcon(const Words& words) {
  NOTIFYICONDATAA icon{};
  icon.cbSize = 88;
  icon.hWnd = toWindow(words.at(1));
  icon.uID = static_cast<UINT>(toNumber(words.at(2)));
  return json::Object().flag("done", ::Shell_NotifyIconA(NIM_DELETE, &icon)).done();
}

// Loads a library into another process, as the shell's extensions are loaded into every program.
std::string load(const Words& words) {
  const OtherProcess process(static_cast<DWORD>(toNumber(words.at(1))));
  const std::wstring path = words.at(2);
  const size_t size = (path.size() + 1) * sizeof(wchar_t);
  OtherProcess::Memory memory(process, size);
  if (!memory.write(path.c_str(), size)) return failure("no such process");
  const auto module = process.call("kernel32.dll", "LoadLibraryW", {reinterpret_cast<DWORD>(memory.address())});
  return module.value_or(0) ? json::Object().flag("loaded", true).done() : failure("the library was not loaded");
}

std::string broadcast(const Words& words) {
  const UINT message = ::RegisterWindowMessageW(words.at(1).c_str());
  for (const HWND window : topWindows()) ::PostMessageA(window, message, 0, 0);
  return json::Object().number("message", message).done();
}

const std::map<std::wstring, std::function<std::string(const Words&)>> kCommands{
    {L"windows", windows},
    {L"top", top},
    {L"windowat", windowAt},
    {L"controls", controls},
    {L"control", control},
    {L"withid", withId},
    {L"handleof", handleOf},
    {L"controlof", controlOf},
    {L"items", items},
    {L"itemrect", itemRectangle},
    {L"foreground", foreground},
    {L"focus", threadFocus},
    {L"post", post},
    {L"send", send},
    {L"sendeach", sendEach},
    {L"show", show},
    {L"settext", setText},
    {L"drop", drop},
    {L"textsize", textSize},
    {L"invalidate", invalidate},
    {L"unpainted", waitsForPaint},
    {L"input", input},
    {L"menu", menu},
    {L"stockicon", stockIcon},
    {L"processes", processes},
    {L"resources", resources},
    {L"start", start},
    {L"ended", ended},
    {L"terminate", terminate},
    {L"halt", halt},
    {L"step", step},
    {L"reg", readValue},
    {L"reglist", listKey},
    {L"regset", setValue},
    {L"regvolatile", makeVolatileKey},
    {L"regdelkey", deleteKey},
    {L"dropicon", dropIcon},
    {L"load", load},
    {L"broadcast", broadcast},
};

std::string answer(const std::string& line) {
  try {
    const Words words = json::words(line);
    if (words.empty()) return failure("empty command");
    const auto command = kCommands.find(words.front());
    return command == kCommands.end() ? failure("unknown command: " + line) : command->second(words);
  } catch (const std::exception& e) {
    return failure(std::string("bad command: ") + e.what());
  }
}

// The desktop appears a while after its explorer was started.
bool joinDesktop() {
  for (int tries = 0; tries < 600; ++tries) {
    probesDesktop = ::OpenDesktopW(desktopName.c_str(), 0, FALSE, GENERIC_ALL);
    if (probesDesktop) return ::SetThreadDesktop(probesDesktop);
    ::Sleep(50);
  }
  return false;
}

// A line of standard input without its end. Read from the handle itself: the runtime's text reading loses characters of a
// pipe now and then while a session ends.
bool readLine(std::string& line) {
  static std::string waiting;
  std::size_t end;
  while ((end = waiting.find('\n')) == std::string::npos) {
    char bytes[4096];
    DWORD count = 0;
    if (!::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), bytes, sizeof bytes, &count, nullptr) &&
        ::GetLastError() != ERROR_OPERATION_ABORTED)
      return false;
    waiting.append(bytes, count);
  }
  line = waiting.substr(0, end);
  waiting.erase(0, end + 1);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::cout << failure("usage: uiprobe DESKTOPNAME") << std::endl;
    return 2;
  }
  const std::string name = arguments[1];
  desktopName.assign(name.begin(), name.end());
  if (!joinDesktop()) {
    std::cout << failure("there is no desktop of that name") << std::endl;
    return 1;
  }
  std::cout << json::Object().number("ready", 1).done() << std::endl;
  for (std::string line; readLine(line);) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
    if (line == "quit") break;
    std::cout << answer(line) << std::endl;
  }
  return 0;
}
