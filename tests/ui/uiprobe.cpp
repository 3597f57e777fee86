// The eyes of the tests inside Windows: sits on the desktop of the program under test, reads one command per line and
// answers each with one line of JSON.
//
// It never reads the keyboard by GetAsyncKeyState: that call uses up the "pressed since the last call" mark, which is
// kept once per desktop and which the program under test waits for.
#include "probe_json.h"
#include "probe_other_process.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>

namespace
{

using Words = std::vector<std::wstring>;

constexpr UINT kQueryTimeout = 2000;
constexpr int kItemsInOverview = 100;

std::map<DWORD, HANDLE> startedProcesses;
std::wstring desktopName;

std::string hexHandle(HWND window)
{
    return std::to_string(reinterpret_cast<DWORD>(window));
}

long long toNumber(const std::wstring &word)
{
    return std::stoll(word, nullptr, 0);
}

HWND toWindow(const std::wstring &word)
{
    return reinterpret_cast<HWND>(static_cast<DWORD>(toNumber(word)));
}

std::string failure(const std::string &what)
{
    return json::Object().text("error", std::wstring(what.begin(), what.end())).done();
}

std::string rectangle(const RECT &r)
{
    return json::Array()
        .add(std::to_string(r.left))
        .add(std::to_string(r.top))
        .add(std::to_string(r.right))
        .add(std::to_string(r.bottom))
        .done();
}

std::string windowRectangle(HWND window)
{
    RECT r{};
    ::GetWindowRect(window, &r);
    return rectangle(r);
}

std::wstring className(HWND window)
{
    wchar_t name[256] = L"";
    ::GetClassNameW(window, name, 256);
    return name;
}

bool same(const std::wstring &a, const wchar_t *b)
{
    return ::lstrcmpiW(a.c_str(), b) == 0;
}

// Messages to other processes, none of which can hold the probe up: a thread that let one time out is not asked again.
class Asker
{
public:
    std::optional<DWORD> send(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0)
    {
        const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
        if (m_silent.count(thread))
            return std::nullopt;
        DWORD_PTR result = 0;
        ::SetLastError(0);
        if (::SendMessageTimeoutW(window, message, w, l, SMTO_NORMAL, kQueryTimeout, &result))
            return static_cast<DWORD>(result);
        if (::IsWindow(window))
            m_silent.insert(thread);
        return std::nullopt;
    }

    std::wstring text(HWND window)
    {
        const auto length = send(window, WM_GETTEXTLENGTH).value_or(0);
        std::wstring out(length + 2, L'\0');
        const auto got = send(window, WM_GETTEXT, out.size(), reinterpret_cast<LPARAM>(out.data()));
        out.resize(std::min<size_t>(got.value_or(0), length + 1));
        return out;
    }

    bool everyoneAnswered() const
    {
        return m_silent.empty();
    }

private:
    std::set<DWORD> m_silent;
};

std::optional<std::wstring> itemText(Asker &ask, HWND list, UINT lengthMessage, UINT textMessage, int index)
{
    const auto length = ask.send(list, lengthMessage, index);
    if (!length || static_cast<int>(*length) < 0)
        return std::nullopt;
    std::wstring out(*length + 2, L'\0');
    const auto got = ask.send(list, textMessage, index, reinterpret_cast<LPARAM>(out.data()));
    if (!got || static_cast<int>(*got) < 0)
        return std::nullopt;
    out.resize(std::min<size_t>(*got, *length + 1));
    return out;
}

std::string itemsFrom(Asker &ask, HWND list, bool combo, int first, int last)
{
    json::Array items;
    for (int i = first; i < last; ++i) {
        const auto text = combo ? itemText(ask, list, CB_GETLBTEXTLEN, CB_GETLBTEXT, i)
                                : itemText(ask, list, LB_GETTEXTLEN, LB_GETTEXT, i);
        if (!text)
            break;
        items.add(json::quoted(*text));
    }
    return items.done();
}

void describeButton(Asker &ask, HWND window, json::Object &out)
{
    const auto checked = ask.send(window, BM_GETCHECK);
    if (checked)
        out.number("check", *checked);
}

void describeList(Asker &ask, HWND window, json::Object &out)
{
    const int count = static_cast<int>(ask.send(window, LB_GETCOUNT).value_or(0));
    out.number("count", count);
    out.raw("items", itemsFrom(ask, window, false, 0, std::min(count, kItemsInOverview)));
    out.number("selected", static_cast<int>(ask.send(window, LB_GETCURSEL).value_or(static_cast<DWORD>(LB_ERR))));
    out.number("top", static_cast<int>(ask.send(window, LB_GETTOPINDEX).value_or(0)));
    json::Array chosen;
    if (::GetWindowLongA(window, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL))
        for (int i = 0; i < count; ++i)
            if (static_cast<int>(ask.send(window, LB_GETSEL, i).value_or(0)) > 0)
                chosen.add(std::to_string(i));
    out.raw("chosen", chosen.done());
}

void describeCombo(Asker &ask, HWND window, json::Object &out)
{
    const int count = static_cast<int>(ask.send(window, CB_GETCOUNT).value_or(0));
    out.number("count", count);
    out.raw("items", itemsFrom(ask, window, true, 0, std::min(count, kItemsInOverview)));
    out.number("selected", static_cast<int>(ask.send(window, CB_GETCURSEL).value_or(static_cast<DWORD>(CB_ERR))));
    out.flag("dropped", ask.send(window, CB_GETDROPPEDSTATE).value_or(0) != 0);
}

void describeProgress(Asker &ask, HWND window, json::Object &out)
{
    out.number("min", static_cast<int>(ask.send(window, PBM_GETRANGE, TRUE).value_or(0)));
    out.number("max", static_cast<int>(ask.send(window, PBM_GETRANGE, FALSE).value_or(0)));
    out.number("pos", static_cast<int>(ask.send(window, PBM_GETPOS).value_or(0)));
}

void describeStatusBar(Asker &ask, HWND window, const OtherProcess &process, json::Object &out)
{
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
    for (int i = 0; i < count && ask.everyoneAnswered(); ++i)
        parts.add(json::quoted(part(i)));
    out.raw("parts", parts.done()).flag("simple", simple);
    if (simple)
        out.text("simple_text", part(SB_SIMPLEID));
}

void describeDatePicker(Asker &ask, HWND window, const OtherProcess &process, json::Object &out)
{
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

void describeUpDown(Asker &ask, HWND window, json::Object &out)
{
    // The 16-bit messages, because they carry no pointers.
    const DWORD range = ask.send(window, UDM_GETRANGE).value_or(0);
    out.number("min", static_cast<short>(HIWORD(range)));
    out.number("max", static_cast<short>(LOWORD(range)));
    out.number("pos", static_cast<short>(LOWORD(ask.send(window, UDM_GETPOS).value_or(0))));
    out.number("buddy", ask.send(window, UDM_GETBUDDY).value_or(0));
}

std::string describeControl(Asker &ask, HWND window)
{
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
    else if (same(kind, STATUSCLASSNAMEW))
        describeStatusBar(ask, window, OtherProcess(pid), out);
    else if (same(kind, DATETIMEPICK_CLASSW))
        describeDatePicker(ask, window, OtherProcess(pid), out);
    out.flag("answered", ask.everyoneAnswered());
    return out.done();
}

std::string describeTopWindow(HWND window, int z)
{
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

BOOL CALLBACK collect(HWND window, LPARAM into)
{
    reinterpret_cast<std::vector<HWND> *>(into)->push_back(window);
    return TRUE;
}

std::vector<HWND> topWindows()
{
    std::vector<HWND> found;
    ::EnumWindows(collect, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::vector<HWND> descendants(HWND window)
{
    std::vector<HWND> found;
    ::EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::string windows(const Words &)
{
    json::Array all;
    int z = 0;
    for (const HWND window : topWindows())
        all.add(describeTopWindow(window, z++));
    return all.done();
}

std::string controls(const Words &words)
{
    Asker ask;
    json::Array all;
    for (const HWND child : descendants(toWindow(words.at(1))))
        all.add(describeControl(ask, child));
    return all.done();
}

std::string control(const Words &words)
{
    const HWND window = toWindow(words.at(1));
    if (!::IsWindow(window))
        return failure("no such window");
    Asker ask;
    return describeControl(ask, window);
}

std::string withId(const Words &words)
{
    const int id = static_cast<int>(toNumber(words.at(2)));
    json::Array found;
    for (const HWND child : descendants(toWindow(words.at(1))))
        if (::GetDlgCtrlID(child) == id)
            found.add(json::Object()
                          .raw("hwnd", hexHandle(child))
                          .text("class", className(child))
                          .flag("visible", ::IsWindowVisible(child))
                          .done());
    return found.done();
}

std::string items(const Words &words)
{
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

std::string itemRectangle(const Words &words)
{
    const HWND list = toWindow(words.at(1));
    RECT r{};
    Asker ask;
    const auto got = ask.send(list, LB_GETITEMRECT, toNumber(words.at(2)), reinterpret_cast<LPARAM>(&r));
    if (!got || static_cast<int>(*got) == LB_ERR)
        return failure("no such item");
    ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT *>(&r), 2);
    RECT client{};
    ::GetClientRect(list, &client);
    ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT *>(&client), 2);
    return json::Object().raw("rect", rectangle(r)).raw("client", rectangle(client)).done();
}

std::string threadFocus(const Words &)
{
    const HWND front = ::GetForegroundWindow();
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    json::Object out;
    out.raw("foreground", hexHandle(front));
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

std::string foreground(const Words &)
{
    const HWND front = ::GetForegroundWindow();
    return front ? describeTopWindow(front, -1) : "null";
}

std::string post(const Words &words)
{
    const BOOL done = ::PostMessageA(toWindow(words.at(1)), static_cast<UINT>(toNumber(words.at(2))),
                                     static_cast<WPARAM>(toNumber(words.at(3))),
                                     static_cast<LPARAM>(toNumber(words.at(4))));
    return json::Object().flag("posted", done).done();
}

std::string send(const Words &words)
{
    LARGE_INTEGER rate{}, before{}, after{};
    ::QueryPerformanceFrequency(&rate);
    ::QueryPerformanceCounter(&before);
    DWORD_PTR result = 0;
    ::SetLastError(0);
    const bool answered = ::SendMessageTimeoutA(toWindow(words.at(1)), static_cast<UINT>(toNumber(words.at(2))),
                                                static_cast<WPARAM>(toNumber(words.at(3))),
                                                static_cast<LPARAM>(toNumber(words.at(4))), SMTO_NORMAL,
                                                static_cast<UINT>(toNumber(words.at(5))), &result) != 0;
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

std::string setText(const Words &words)
{
    Asker ask;
    const auto done = ask.send(toWindow(words.at(1)), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(words.at(2).c_str()));
    return json::Object().flag("set", done.value_or(0) != 0).done();
}

// Asks a window to paint one of its pixels. It does so only when no input is left in its queue.
std::string invalidate(const Words &words)
{
    const RECT corner{0, 0, 1, 1};
    return json::Object()
        .flag("done", ::RedrawWindow(toWindow(words.at(1)), &corner, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN))
        .done();
}

std::string waitsForPaint(const Words &words)
{
    RECT left{};
    return json::Object().flag("waits", ::GetUpdateRect(toWindow(words.at(1)), &left, FALSE)).done();
}

std::string input(const Words &)
{
    LASTINPUTINFO last{};
    last.cbSize = sizeof last;
    ::GetLastInputInfo(&last);
    POINT cursor{};
    ::GetCursorPos(&cursor);
    const auto down = [](int button) { return (::GetAsyncKeyState(button) & 0x8000) != 0; };
    return json::Object()
        .number("now", ::GetTickCount())
        .number("last", last.dwTime)
        .number("x", cursor.x)
        .number("y", cursor.y)
        .flag("left", down(VK_LBUTTON))
        .flag("right", down(VK_RBUTTON))
        .done();
}

std::string menu(const Words &words)
{
    const HWND window = toWindow(words.at(1));
    DWORD pid = 0;
    ::GetWindowThreadProcessId(window, &pid);
    Asker ask;
    constexpr UINT kGetMenuHandle = 0x01E1;
    const DWORD handle = ask.send(window, kGetMenuHandle).value_or(0);
    const OtherProcess process(pid);
    const auto count = process.callUser32("GetMenuItemCount", {handle});
    if (!handle || !count || static_cast<int>(*count) < 0)
        return failure("that window shows no menu that can be read");
    const DWORD byDefault = process.callUser32("GetMenuDefaultItem", {handle, TRUE, 0}).value_or(~0U);
    json::Array all;
    for (DWORD i = 0; i < *count; ++i) {
        OtherProcess::Memory text(process, 512 * sizeof(wchar_t));
        OtherProcess::Memory rect(process, sizeof(RECT));
        const auto address = [](const OtherProcess::Memory &m) { return reinterpret_cast<DWORD>(m.address()); };
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
std::string stockIcon(const Words &words)
{
    const HWND window = toWindow(words.at(1));
    DWORD pid = 0;
    ::GetWindowThreadProcessId(window, &pid);
    const OtherProcess process(pid);
    Asker ask;
    const DWORD shown = ask.send(window, STM_GETICON).value_or(0);
    const std::pair<DWORD, const wchar_t *> stock[] = {
        {32513, L"error"}, {32514, L"question"}, {32515, L"warning"}, {32516, L"information"}};
    for (const auto &[id, name] : stock)
        if (shown && process.callUser32("LoadIconW", {0, id}) == shown)
            return json::Object().text("icon", name).done();
    return json::Object().raw("icon", shown ? "\"other\"" : "null").done();
}

// Takes another program's notification icon away, as a taskbar that went down does.
std::string dropIcon(const Words &words)
{
    NOTIFYICONDATAA icon{};
    icon.cbSize = 88;
    icon.hWnd = toWindow(words.at(1));
    icon.uID = static_cast<UINT>(toNumber(words.at(2)));
    return json::Object().flag("done", ::Shell_NotifyIconA(NIM_DELETE, &icon)).done();
}

std::string broadcast(const Words &words)
{
    const UINT message = ::RegisterWindowMessageW(words.at(1).c_str());
    for (const HWND window : topWindows())
        ::PostMessageA(window, message, 0, 0);
    return json::Object().number("message", message).done();
}

std::string processes(const Words &)
{
    json::Array all;
    const HANDLE list = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(list, &entry); more; more = ::Process32NextW(list, &entry))
        all.add(json::Object()
                    .number("pid", entry.th32ProcessID)
                    .number("parent", entry.th32ParentProcessID)
                    .text("exe", entry.szExeFile)
                    .done());
    ::CloseHandle(list);
    return all.done();
}

std::string cpuTime(const Words &words)
{
    const HANDLE process = ::OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, static_cast<DWORD>(toNumber(words.at(1))));
    FILETIME made{}, ended{}, kernel{}, user{};
    const bool known = process && ::GetProcessTimes(process, &made, &ended, &kernel, &user);
    if (process)
        ::CloseHandle(process);
    if (!known)
        return failure("no such process");
    const auto ms = [](const FILETIME &t) {
        return static_cast<long long>((static_cast<unsigned long long>(t.dwHighDateTime) << 32 | t.dwLowDateTime) / 10000);
    };
    return json::Object().number("ms", ms(kernel) + ms(user)).number("user", ms(user)).number("kernel", ms(kernel)).done();
}

std::string start(const Words &words)
{
    std::wstring folder = words.at(1), line = words.at(2);
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.lpDesktop = desktopName.data();
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, folder.c_str(), &how,
                          &process))
        return failure("could not start, error " + std::to_string(::GetLastError()));
    ::CloseHandle(process.hThread);
    startedProcesses[process.dwProcessId] = process.hProcess;
    return json::Object().number("pid", process.dwProcessId).done();
}

// Only for processes that the probe started itself, whose handles it holds: their end cannot be missed.
std::string ended(const Words &words)
{
    const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
    if (found == startedProcesses.end())
        return failure("not a process of the probe");
    DWORD code = 0;
    const bool over = ::WaitForSingleObject(found->second, 0) == WAIT_OBJECT_0 && ::GetExitCodeProcess(found->second, &code);
    return json::Object().flag("ended", over).number("code", code).done();
}

std::string terminate(const Words &words)
{
    const auto found = startedProcesses.find(static_cast<DWORD>(toNumber(words.at(1))));
    if (found == startedProcesses.end())
        return failure("not a process of the probe");
    return json::Object().flag("done", ::TerminateProcess(found->second, 1)).done();
}

HKEY hive(const std::wstring &name)
{
    const std::pair<const wchar_t *, HKEY> known[] = {{L"HKCU", HKEY_CURRENT_USER},
                                                      {L"HKLM", HKEY_LOCAL_MACHINE},
                                                      {L"HKCR", HKEY_CLASSES_ROOT},
                                                      {L"HKU", HKEY_USERS}};
    for (const auto &[text, key] : known)
        if (same(name, text))
            return key;
    throw std::invalid_argument("unknown hive");
}

std::string valueAsJson(DWORD type, const std::vector<BYTE> &data)
{
    json::Object out;
    out.number("type", type).number("size", static_cast<long long>(data.size()));
    if (type == REG_SZ || type == REG_EXPAND_SZ) {
        std::wstring text(reinterpret_cast<const wchar_t *>(data.data()), data.size() / sizeof(wchar_t));
        while (!text.empty() && text.back() == L'\0')
            text.pop_back();
        out.text("text", text);
    } else if (type == REG_DWORD && data.size() == 4) {
        DWORD number = 0;
        std::memcpy(&number, data.data(), 4);
        out.number("number", number);
    }
    std::wstring hex;
    for (const BYTE b : data)
        for (const int half : {b >> 4, b & 15})
            hex += L"0123456789abcdef"[half];
    return out.text("hex", hex).done();
}

std::string readValue(const Words &words)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, KEY_READ, &key))
        return "null";
    DWORD type = 0, size = 0;
    std::string answer = "null";
    if (!::RegQueryValueExW(key, words.at(3).c_str(), nullptr, &type, nullptr, &size)) {
        std::vector<BYTE> data(size);
        if (!::RegQueryValueExW(key, words.at(3).c_str(), nullptr, &type, data.data(), &size))
            answer = valueAsJson(type, data);
    }
    ::RegCloseKey(key);
    return answer;
}

std::string listKey(const Words &words)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, KEY_READ, &key))
        return "null";
    json::Object values;
    json::Array keys;
    wchar_t name[512];
    for (DWORD i = 0, length = 512; !::RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr); ++i, length = 512)
        keys.add(json::quoted(name));
    for (DWORD i = 0;; ++i) {
        DWORD length = 512, type = 0, size = 0;
        if (::RegEnumValueW(key, i, name, &length, nullptr, &type, nullptr, &size))
            break;
        std::vector<BYTE> data(size);
        ::RegQueryValueExW(key, name, nullptr, &type, data.data(), &size);
        const std::string quoted = json::quoted(name);
        values.raw(quoted.substr(1, quoted.size() - 2), valueAsJson(type, data));
    }
    ::RegCloseKey(key);
    return json::Object().raw("values", values.done()).raw("keys", keys.done()).done();
}

std::string setValue(const Words &words)
{
    HKEY key = nullptr;
    if (::RegCreateKeyExW(hive(words.at(1)), words.at(2).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr))
        return failure("the key could not be made");
    const std::wstring &text = words.at(4);
    const bool number = words.size() > 5 && same(words[5], L"dword");
    const DWORD value = number ? static_cast<DWORD>(toNumber(text)) : 0;
    const LONG error =
        number ? ::RegSetValueExW(key, words.at(3).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE *>(&value), 4)
               : ::RegSetValueExW(key, words.at(3).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE *>(text.c_str()),
                                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    ::RegCloseKey(key);
    return json::Object().flag("set", error == 0).done();
}

LONG deleteTree(HKEY parent, const std::wstring &path)
{
    HKEY key = nullptr;
    if (const LONG error = ::RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ | KEY_WRITE, &key))
        return error;
    wchar_t name[512];
    for (DWORD length = 512; !::RegEnumKeyExW(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr); length = 512)
        if (deleteTree(key, name))
            break;
    ::RegCloseKey(key);
    return ::RegDeleteKeyW(parent, path.c_str());
}

std::string deleteKey(const Words &words)
{
    if (words.at(2).empty())
        return failure("a hive is not deleted");
    return json::Object().flag("deleted", deleteTree(hive(words.at(1)), words.at(2)) == 0).done();
}

const std::map<std::wstring, std::function<std::string(const Words &)>> kCommands{
    {L"windows", windows},       {L"controls", controls},      {L"control", control},       {L"withid", withId},
    {L"items", items},           {L"itemrect", itemRectangle}, {L"foreground", foreground}, {L"focus", threadFocus},
    {L"post", post},             {L"send", send},              {L"settext", setText},       {L"invalidate", invalidate},
    {L"unpainted", waitsForPaint}, {L"input", input},          {L"menu", menu},             {L"stockicon", stockIcon},
    {L"processes", processes},   {L"cputime", cpuTime},        {L"start", start},           {L"ended", ended},
    {L"terminate", terminate},   {L"reg", readValue},          {L"reglist", listKey},       {L"regset", setValue},
    {L"regdelkey", deleteKey},   {L"dropicon", dropIcon},      {L"broadcast", broadcast},
};

std::string answer(const std::string &line)
{
    try {
        const Words words = json::words(line);
        if (words.empty())
            return failure("empty command");
        const auto command = kCommands.find(words.front());
        return command == kCommands.end() ? failure("unknown command") : command->second(words);
    } catch (const std::exception &e) {
        return failure(std::string("bad command: ") + e.what());
    }
}

// The desktop appears a while after its explorer was started.
bool joinDesktop()
{
    for (int tries = 0; tries < 600; ++tries) {
        if (const HDESK desktop = ::OpenDesktopW(desktopName.c_str(), 0, FALSE, GENERIC_ALL))
            return ::SetThreadDesktop(desktop);
        ::Sleep(50);
    }
    return false;
}

} // namespace

int main(int count, char **arguments)
{
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
    for (std::string line; std::getline(std::cin, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == '\n'))
            line.pop_back();
        if (line == "quit")
            break;
        std::cout << answer(line) << std::endl;
    }
    return 0;
}
