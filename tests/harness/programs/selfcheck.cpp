// A small program with one of everything that the driver has to handle, built like the real one: a modeless dialog of
// a class of its own, owned by a hidden window, with panels as child dialogs in one place and an icon whose callback
// message has the number of a mouse move. Whatever the user does, it tells so in a label.
#include "selfcheck_ids.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr UINT kIconMessage = 512;
constexpr UINT kIconId = 1;
constexpr char kKey[] = "Software\\Quellix\\Selfcheck\\Main";

HINSTANCE instance;
HWND mainWindow;
HWND panels[2];
int counted;
int panelOnShow;

void say(const std::string& text) { ::SetDlgItemTextA(mainWindow, IDC_lblResult, text.c_str()); }

void store(const char* name, const std::string& text) {
  HKEY key = nullptr;
  ::RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
  ::RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), static_cast<DWORD>(text.size() + 1));
  ::RegCloseKey(key);
}

std::string stored(const char* name) {
  char text[200] = "";
  DWORD size = sizeof text;
  HKEY key = nullptr;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key)) return {};
  ::RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
  ::RegCloseKey(key);
  return text;
}

HWND add(HWND parent, const char* kind, const char* text, DWORD style, int id, RECT r) {
  const HWND made = ::CreateWindowExA(0, kind, text, WS_CHILD | WS_VISIBLE | style, r.left, r.top, r.right, r.bottom, parent,
                                      reinterpret_cast<HMENU>(id), instance, nullptr);
  ::SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)), TRUE);
  return made;
}

void changeIcon(DWORD operation) {
  NOTIFYICONDATAA icon{};
  icon.cbSize = 88;
  icon.hWnd = mainWindow;
  icon.uID = kIconId;
  icon.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  icon.uCallbackMessage = kIconMessage;
  icon.hIcon = ::LoadIconA(nullptr, IDI_WARNING);
  std::strcpy(icon.szTip, "Selfcheck");
  ::Shell_NotifyIconA(operation, &icon);
}

void quit() {
  changeIcon(NIM_DELETE);
  store("Left", "1");
  ::ExitProcess(7);
}

void showMenu() {
  const HMENU menu = ::CreatePopupMenu();
  ::AppendMenuA(menu, MF_STRING, 1, "&Clean");
  ::AppendMenuA(menu, MF_STRING | MF_CHECKED, 2, "&Show");
  ::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
  ::AppendMenuA(menu, MF_STRING | MF_GRAYED, 3, "Never");
  ::AppendMenuA(menu, MF_STRING, 4, "E&xit");
  ::SetMenuDefaultItem(menu, 2, FALSE);
  POINT at{};
  ::GetCursorPos(&at);
  ::SetForegroundWindow(mainWindow);
  const int picked = ::TrackPopupMenu(menu, TPM_RETURNCMD, at.x, at.y, 0, mainWindow, nullptr);
  ::DestroyMenu(menu);
  say("menu " + std::to_string(picked));
  if (picked == 4) quit();
}

// The release that ends a double click comes as a left click of its own, so only the whole row tells the two apart.
void onIcon(LPARAM mouse) {
  static std::string row;
  if (mouse == WM_LBUTTONUP)
    say(row += "left ");
  else if (mouse == WM_LBUTTONDBLCLK)
    say(row += "double ");
  else if (mouse == WM_RBUTTONUP)
    showMenu();
}

void showPanel(int which) {
  panelOnShow = which;
  for (int i = 0; i < 2; ++i) ::ShowWindow(panels[i], i == which ? SW_SHOW : SW_HIDE);
  ::SendDlgItemMessageA(mainWindow, IDC_stBar, SB_SETTEXTA, 1,
                        reinterpret_cast<LPARAM>(which ? "Second panel" : "First panel"));
}

void ask() {
  const int answer = ::MessageBoxA(mainWindow, "Are you sure you want to go on?", "Confirmation",
                                   MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
  say(answer == IDYES ? "yes" : "no");
  ::MessageBoxA(mainWindow, "Nothing to see here", "Selfcheck", MB_OK | MB_ICONERROR);
}

void chooseFile() {
  char path[MAX_PATH] = "";
  OPENFILENAMEA open{};
  open.lStructSize = 76;
  open.hwndOwner = mainWindow;
  open.lpstrFile = path;
  open.nMaxFile = MAX_PATH;
  open.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST;
  say(::GetOpenFileNameA(&open) ? path : "no file");
}

DWORD ownMilliseconds() {
  FILETIME made{}, ended{}, kernel{}, user{};
  ::GetProcessTimes(::GetCurrentProcess(), &made, &ended, &kernel, &user);
  return (kernel.dwLowDateTime + user.dwLowDateTime) / 10000;
}

void burn(DWORD milliseconds) {
  for (const DWORD begin = ownMilliseconds(); ownMilliseconds() - begin < milliseconds;) {
  }
  say("burnt");
}

void onCommand(int id, int code) {
  switch (id) {
    case IDC_cmdCount:
      say("clicked " + std::to_string(++counted));
      break;
    case IDC_cmdAsk:
      ask();
      break;
    case IDC_cmdSwitch:
      showPanel(1 - panelOnShow);
      break;
    case IDC_cmdBusy:
      ::Sleep(2600);
      say("no longer busy");
      break;
    case IDC_cmdFile:
      chooseFile();
      break;
    case 2:
      say("accelerator");
      break;
    case 3:
      burn(300);
      break;
    default:
      if (id == IDC_lstItems && code == LBN_DBLCLK) say("list opened");
  }
}

// Whether F10 was hit since the last look, which is how the real program sees its keys.
void pollKey() {
  if (::GetAsyncKeyState(VK_F10)) ::SetDlgItemTextA(mainWindow, IDC_lblKeys, "F10 seen");
}

INT_PTR CALLBACK mainProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  static const UINT newTaskbar = ::RegisterWindowMessageA("TaskbarCreated");
  if (message == newTaskbar) changeIcon(NIM_ADD);
  switch (message) {
    case WM_COMMAND:
      onCommand(LOWORD(w), HIWORD(w));
      return TRUE;
    case kIconMessage:
      if (w != kIconId || HIWORD(l)) return FALSE;
      onIcon(l);
      return TRUE;
    case WM_TIMER:
      pollKey();
      return TRUE;
    case WM_SYSCOMMAND:
      if ((w & 0xFFF0) != SC_MINIMIZE) return FALSE;
      ::ShowWindow(window, SW_HIDE);
      return TRUE;
    case WM_CLOSE:
      quit();
      return TRUE;
    case WM_QUERYENDSESSION:
      store("Asked", "1");
      ::SetWindowLongA(window, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case WM_ENDSESSION:
      store("Session", w ? "ended" : "goes on");
      if (w) quit();
      return TRUE;
    default:
      return FALSE;
  }
}

INT_PTR CALLBACK panelProcedure(HWND, UINT message, WPARAM w, LPARAM) {
  if (message == WM_COMMAND) onCommand(LOWORD(w), HIWORD(w));
  return message == WM_COMMAND;
}

HWND emptyDialog(HWND owner, const wchar_t* kind, const wchar_t* title, DWORD style, RECT r, DLGPROC procedure) {
  alignas(4) unsigned char memory[256] = {};
  auto* const head = reinterpret_cast<DLGTEMPLATE*>(memory);
  head->style = style;
  auto* text = reinterpret_cast<wchar_t*>(memory + sizeof *head);
  *text++ = 0;
  text = std::wcscpy(text, kind) + std::wcslen(kind) + 1;
  std::wcscpy(text, title);
  const HWND made = ::CreateDialogIndirectParamA(instance, head, owner, procedure, 0);
  ::SetWindowPos(made, nullptr, r.left, r.top, r.right, r.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
  return made;
}

void fillFirstPanel(HWND panel) {
  add(panel, "BUTTON", "First option", BS_AUTOCHECKBOX | WS_TABSTOP, IDC_chkOption_0, {10, 10, 150, 20});
  add(panel, "BUTTON", "Second option", BS_AUTOCHECKBOX | WS_TABSTOP, IDC_chkOption_1, {10, 35, 150, 20});
  add(panel, "BUTTON", "Mode A", BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, IDC_optMode_0, {170, 10, 100, 20});
  add(panel, "BUTTON", "Mode B", BS_AUTORADIOBUTTON, IDC_optMode_1, {170, 35, 100, 20});
  const HWND list =
      add(panel, "LISTBOX", "", WS_BORDER | WS_VSCROLL | LBS_NOTIFY | WS_GROUP, IDC_lstItems, {10, 65, 180, 100});
  for (int i = 0; i < 150; ++i)
    ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(("line " + std::to_string(i)).c_str()));
  add(panel, "EDIT", "old text", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, IDC_txtName, {210, 65, 180, 22});
  const HWND combo =
      add(panel, "COMBOBOX", "", CBS_DROPDOWNLIST | WS_TABSTOP | WS_VSCROLL, IDC_cmbPick, {210, 95, 180, 200});
  for (const char* key : {"F1", "F2", "F3", "F4", "F5"})
    ::SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(key));
  ::SendMessageA(combo, CB_SETCURSEL, 3, 0);
  add(panel, "STATIC", "shared on the first", 0, IDC_lblShared, {210, 140, 180, 20});
}

void fillSecondPanel(HWND panel) {
  const HWND progress = add(panel, PROGRESS_CLASSA, "", 0, IDC_prgWork, {10, 10, 200, 20});
  ::SendMessageA(progress, PBM_SETRANGE, 0, MAKELPARAM(5, 250));
  ::SendMessageA(progress, PBM_SETPOS, 42, 0);
  const HWND time = add(panel, DATETIMEPICK_CLASSA, "", DTS_TIMEFORMAT | WS_TABSTOP, IDC_dtpTime, {10, 40, 150, 24});
  const SYSTEMTIME at{2020, 2, 3, 5, 21, 34, 56, 0};
  ::SendMessageA(time, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&at));
  add(panel, "EDIT", "50", WS_BORDER, IDC_txtLevel, {10, 75, 60, 22});
  const HWND spin = add(panel, UPDOWN_CLASSA, "", UDS_AUTOBUDDY | UDS_SETBUDDYINT | UDS_ALIGNRIGHT, IDC_updLevel, {});
  ::SendMessageA(spin, UDM_SETRANGE, 0, MAKELPARAM(99, 1));
  ::SendMessageA(spin, UDM_SETPOS, 0, 50);
  add(panel, "STATIC", "shared on the second \xFC", 0, IDC_lblShared, {210, 140, 180, 20});
}

void fillMainWindow() {
  add(mainWindow, "BUTTON", "Count", WS_TABSTOP, IDC_cmdCount, {10, 10, 80, 24});
  add(mainWindow, "BUTTON", "Ask", WS_TABSTOP, IDC_cmdAsk, {95, 10, 80, 24});
  add(mainWindow, "BUTTON", "Switch", WS_TABSTOP, IDC_cmdSwitch, {180, 10, 80, 24});
  add(mainWindow, "BUTTON", "Busy", WS_TABSTOP, IDC_cmdBusy, {265, 10, 80, 24});
  add(mainWindow, "BUTTON", "Off", WS_DISABLED, IDC_cmdDisabled, {350, 10, 60, 24});
  add(mainWindow, "BUTTON", "File", WS_TABSTOP, IDC_cmdFile, {415, 10, 60, 24});
  add(mainWindow, "STATIC", stored("Greeting").c_str(), SS_NOPREFIX, IDC_lblResult, {10, 40, 260, 20});
  add(mainWindow, "STATIC", "", 0, IDC_lblKeys, {280, 40, 190, 20});
  const HWND bar = add(mainWindow, STATUSCLASSNAMEA, "", 0, IDC_stBar, {});
  const int edges[] = {120, -1};
  ::SendMessageA(bar, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(edges));
  ::SendMessageA(bar, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>("Ready"));
  for (HWND& panel : panels)
    panel = emptyDialog(mainWindow, L"#32770", L"", WS_CHILD | DS_CONTROL, {10, 65, 470, 220}, panelProcedure);
  fillFirstPanel(panels[0]);
  fillSecondPanel(panels[1]);
}

void registerClass(const char* name, WNDPROC procedure, int extra) {
  WNDCLASSA kind{};
  kind.lpfnWndProc = procedure;
  kind.cbWndExtra = extra;
  kind.hInstance = instance;
  kind.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  kind.lpszClassName = name;
  ::RegisterClassA(&kind);
}

}  // namespace

int WINAPI WinMain(HINSTANCE self, HINSTANCE, LPSTR, int) {
  instance = self;
  ::CreateMutexA(nullptr, FALSE, "Quellix harness selfcheck");
  if (::GetLastError() == ERROR_ALREADY_EXISTS) return 3;
  const INITCOMMONCONTROLSEX kinds{8, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
  ::InitCommonControlsEx(&kinds);
  registerClass("SelfcheckMain", ::DefWindowProcA, 0);
  registerClass("frmSelf", ::DefDlgProcA, DLGWINDOWEXTRA);
  const HWND hidden =
      ::CreateWindowExA(0, "SelfcheckMain", "Selfcheck", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, instance, nullptr);
  mainWindow = emptyDialog(hidden, L"frmSelf", L"Selfcheck v1.0", WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN,
                           {200, 150, 500, 360}, mainProcedure);
  fillMainWindow();
  showPanel(0);
  changeIcon(NIM_ADD);
  ::SetTimer(mainWindow, 1, 50, nullptr);
  ::ShowWindow(mainWindow, SW_SHOW);

  ACCEL keys[] = {{FVIRTKEY | FCONTROL, '2', 2}, {FVIRTKEY | FCONTROL, '3', 3}};
  const HACCEL accelerators = ::CreateAcceleratorTableA(keys, 2);
  for (MSG message; ::GetMessageA(&message, nullptr, 0, 0) > 0;)
    if (!::TranslateAcceleratorA(mainWindow, accelerators, &message) && !::IsDialogMessageA(mainWindow, &message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageA(&message);
    }
  return 0;
}
