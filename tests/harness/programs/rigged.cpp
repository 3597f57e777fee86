// Lies between the program and some of the system's functions: a library that the program is started with. It writes down
// what they are called with, in C:\calls.txt, a line a call, and makes them act as the words in C:\rigged.txt say:
//
//   no-reboot            ExitWindowsEx is written down and does nothing
//   no-icon N            the first N attempts to add a notification icon fail
//   slow-instance MS     a window of the class "QuellixMain" takes so long to be created
//   no-close             a request to close a window of the class "IEFrame" is refused
//   clicks-at-focus      an option button that gets the keyboard is clicked, as real Windows does it
//   backspaces           Ctrl+H in a box to write in, which deletes a letter on real Windows, is written down
//   left-down            the left button of the mouse is down, as for a program in which a drag began that ended elsewhere
#include <windows.h>

#include <shellapi.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <string>

namespace {

std::map<std::string, int> words;

bool Is(const char* word) { return words.count(word) != 0; }

// One line of the record.
void Note(const char* format, ...) {
  char line[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line, sizeof line - 2, format, arguments);
  va_end(arguments);
  std::strcat(line, "\r\n");
  const HANDLE file =
      ::CreateFileA("C:\\calls.txt", FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr);
  DWORD written = 0;
  ::WriteFile(file, line, static_cast<DWORD>(std::strlen(line)), &written, nullptr);
  ::CloseHandle(file);
}

std::string ClassOf(HWND window) {
  char name[64] = "";
  ::GetClassNameA(window, name, sizeof name);
  return name;
}

BOOL WINAPI RiggedExitWindowsEx(UINT flags, DWORD reason) {
  Note("ExitWindowsEx %u", flags);
  return Is("no-reboot") ? TRUE : ::ExitWindowsEx(flags, reason);
}

HWND WINAPI RiggedCreateWindowExA(DWORD extended, LPCSTR name, LPCSTR title, DWORD style, int x, int y, int width,
                                  int height, HWND parent, HMENU menu, HINSTANCE module, void* parameter) {
  if (Is("slow-instance") && std::strcmp(name, "QuellixMain") == 0) ::Sleep(static_cast<DWORD>(words["slow-instance"]));
  return ::CreateWindowExA(extended, name, title, style, x, y, width, height, parent, menu, module, parameter);
}

HANDLE WINAPI RiggedLoadImageA(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags) {
  if (type == IMAGE_ICON) Note("LoadImageA icon %d %d %X", width, height, flags);
  return ::LoadImageA(module, name, type, width, height, flags);
}

BOOL WINAPI RiggedPostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const bool asksToClose = message == WM_CLOSE && ClassOf(window) == "IEFrame";
  if (asksToClose) Note("PostMessageA close %lu", ::GetTickCount());
  return asksToClose && Is("no-close") ? FALSE : ::PostMessageA(window, message, wParam, lParam);
}

BOOL WINAPI RiggedSetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) {
  Note("SetWindowPlacement %s show %u flags %u", ClassOf(window).c_str(), placement->showCmd, placement->flags);
  return ::SetWindowPlacement(window, placement);
}

BOOL WINAPI RiggedShellNotifyIcon(DWORD operation, NOTIFYICONDATAA* icon) {
  int& failures = words["no-icon"];
  const bool fails = operation == NIM_ADD && failures > 0;
  if (fails) --failures;
  Note("Shell_NotifyIconA %lu size %lu id %u flags %u callback %u '%s'%s", operation, icon->cbSize, icon->uID, icon->uFlags,
       icon->uCallbackMessage, icon->szTip, fails ? " fails" : "");
  if (fails || (operation == NIM_MODIFY && failures > 0)) return FALSE;
  return ::Shell_NotifyIconA(operation, icon);
}

BOOL WINAPI RiggedChangeWindowMessageFilter(UINT message, DWORD action) {
  char name[64] = "";
  ::GetClipboardFormatNameA(message, name, sizeof name);  // registered messages and formats have their names in one table
  Note("ChangeWindowMessageFilter %s %lu", name, action);
  return TRUE;
}

BOOL WINAPI RiggedShutdownBlockReasonCreate(HWND window, LPCWSTR reason) {
  Note("ShutdownBlockReasonCreate %s '%ls'", ClassOf(window).c_str(), reason);
  return TRUE;
}

BOOL WINAPI RiggedShutdownBlockReasonDestroy(HWND window) {
  Note("ShutdownBlockReasonDestroy %s", ClassOf(window).c_str());
  return TRUE;
}

BOOL WINAPI RiggedOpenIcon(HWND window) {
  Note("OpenIcon %s", ClassOf(window).c_str());
  return ::OpenIcon(window);
}

SHORT WINAPI RiggedGetKeyState(int key) {
  return key == VK_LBUTTON && Is("left-down") ? static_cast<SHORT>(0x8000) : ::GetKeyState(key);
}

// Both open nothing.
HINSTANCE WINAPI RiggedShellExecuteA(HWND, LPCSTR, LPCSTR file, LPCSTR, LPCSTR, INT) {
  Note("ShellExecute %s", file);
  return reinterpret_cast<HINSTANCE>(42);
}

HINSTANCE WINAPI RiggedShellExecuteW(HWND, LPCWSTR, LPCWSTR file, LPCWSTR, LPCWSTR, INT) {
  Note("ShellExecute %ls", file);
  return reinterpret_cast<HINSTANCE>(42);
}

// Wine's user is an administrator; the one of these tests has no more rights than the shell that runs.
BOOL WINAPI RiggedGetTokenInformation(HANDLE token, int kind, void* record, DWORD size, DWORD* length) {
  constexpr int kElevationType = 18;
  const auto known = static_cast<TOKEN_INFORMATION_CLASS>(kind);
  const BOOL told = ::GetTokenInformation(token, known, record, size, length);
  if (told && kind == kElevationType) *static_cast<DWORD*>(record) = 1;  // TokenElevationTypeDefault
  return told;
}

FARPROC WINAPI RiggedGetProcAddress(HMODULE module, LPCSTR name);

struct Rigged {
  const char* name;
  void* function;
};
#define RIGGED(name, function) \
  { name, reinterpret_cast<void*>(&function) }
const Rigged kRigged[] = {RIGGED("GetProcAddress", RiggedGetProcAddress),
                          RIGGED("ExitWindowsEx", RiggedExitWindowsEx),
                          RIGGED("CreateWindowExA", RiggedCreateWindowExA),
                          RIGGED("LoadImageA", RiggedLoadImageA),
                          RIGGED("OpenIcon", RiggedOpenIcon),
                          RIGGED("GetKeyState", RiggedGetKeyState),
                          RIGGED("PostMessageA", RiggedPostMessageA),
                          RIGGED("SetWindowPlacement", RiggedSetWindowPlacement),
                          RIGGED("Shell_NotifyIconA", RiggedShellNotifyIcon),
                          RIGGED("GetTokenInformation", RiggedGetTokenInformation),
                          RIGGED("ShellExecuteA", RiggedShellExecuteA),
                          RIGGED("ShellExecuteW", RiggedShellExecuteW),
                          RIGGED("ChangeWindowMessageFilter", RiggedChangeWindowMessageFilter),
                          RIGGED("ShutdownBlockReasonCreate", RiggedShutdownBlockReasonCreate),
                          RIGGED("ShutdownBlockReasonDestroy", RiggedShutdownBlockReasonDestroy)};

void* InsteadOf(const char* name) {
  for (const Rigged& one : kRigged)
    if (std::strcmp(one.name, name) == 0) return one.function;
  return nullptr;
}

FARPROC WINAPI RiggedGetProcAddress(HMODULE module, LPCSTR name) {
  void* const instead = reinterpret_cast<ULONG_PTR>(name) > 0xFFFF ? InsteadOf(name) : nullptr;
  return instead != nullptr ? reinterpret_cast<FARPROC>(instead) : ::GetProcAddress(module, name);
}

// The program's imports lie in a table of names and one of addresses, side by side.
void TakeTheirPlaces() {
  auto* const base = reinterpret_cast<char*>(::GetModuleHandleA(nullptr));
  const auto* const header = reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const DWORD place = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* dll = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + place); dll->Name != 0; ++dll) {
    const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->OriginalFirstThunk);
    auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      void* const instead = InsteadOf(reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData)->Name);
      if (instead == nullptr) continue;
      DWORD before = 0;
      ::VirtualProtect(&address->u1.Function, sizeof(void*), PAGE_READWRITE, &before);
      address->u1.Function = reinterpret_cast<DWORD>(instead);
    }
  }
}

WNDPROC systemsButton;

LRESULT CALLBACK ClickedAtFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const LRESULT result = ::CallWindowProcA(systemsButton, window, message, wParam, lParam);
  const LONG kind = ::GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK;
  const bool isOption = kind == BS_RADIOBUTTON || kind == BS_AUTORADIOBUTTON;
  if (message == WM_SETFOCUS && isOption && ::GetCapture() != window) {
    if (kind == BS_AUTORADIOBUTTON) ::SendMessageA(window, BM_SETCHECK, BST_CHECKED, 0);
    ::SendMessageA(::GetParent(window), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(window), BN_CLICKED),
                   reinterpret_cast<LPARAM>(window));
  }
  return result;
}

WNDPROC systemsEdit;

LRESULT CALLBACK NoteBackspace(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CHAR && wParam == VK_BACK) Note("Edit backspace");
  return ::CallWindowProcA(systemsEdit, window, message, wParam, lParam);
}

// Takes the place of a class's procedure for every window of it that the process makes from now on.
WNDPROC Replace(const char* className, WNDPROC procedure) {
  const HWND one = ::CreateWindowExA(0, className, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  const auto before =
      reinterpret_cast<WNDPROC>(::SetClassLongA(one, GCL_WNDPROC, static_cast<LONG>(reinterpret_cast<LONG_PTR>(procedure))));
  ::DestroyWindow(one);
  return before;
}

void ReadWords() {
  std::ifstream file("C:\\rigged.txt");
  for (std::string word; file >> word;) {
    const bool isNumber = word.find_first_not_of("0123456789") == std::string::npos;
    static std::string last;
    if (isNumber)
      words[last] = std::stoi(word);
    else
      words[last = word] = 0;
  }
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  ReadWords();
  TakeTheirPlaces();
  if (Is("clicks-at-focus")) systemsButton = Replace("Button", &ClickedAtFocus);
  if (Is("backspaces")) systemsEdit = Replace("Edit", &NoteBackspace);
  return TRUE;
}
