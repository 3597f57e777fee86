#include "app/frmMain.h"

#include <cstdint>
#include <vector>

#include "app/colours.h"
#include "app/panel_navigation.h"
#include "app/single_instance.h"
#include "app/tray_callback.h"
#include "automation/modReboot.h"
#include "automation/timers.h"
#include "erase/catalogue.h"
#include "erase/run_in_progress.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/asked_log.h"
#include "platform/message_box.h"
#include "platform/os_name.h"
#include "platform/owned_windows.h"
#include "platform/plain_text.h"
#include "platform/product.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/system_functions.h"
#include "platform/tally.h"
#include "platform/window_text.h"
#include "settings/schema.h"
#include "settings/settings_store.h"
#include "settings/settings_variables.h"
#include "settings/stored_settings.h"

namespace app {
using namespace platform;
using settings::Setting;
using settings::Settings;

namespace {

// Not shared, and so loaded once and kept: Windows 9x gives a shared icon in the size that it was first asked for.
HICON OwnIcon(int width, int height) {
  return static_cast<HICON>(
      ::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_quellix), IMAGE_ICON, width, height, LR_DEFAULTCOLOR));
}

void RegisterMainWindowClass() {
  WNDCLASSA main{};
  main.lpfnWndProc = ::DefDlgProcA;
  main.cbWndExtra = DLGWINDOWEXTRA;
  main.hInstance = ::GetModuleHandleA(nullptr);
  main.hIcon = OwnIcon(::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON));
  main.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
  main.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  main.lpszClassName = kMainWindowClass;
  ::RegisterClassA(&main);
}

// Told to the window once the system has given it back the keyboard.
constexpr UINT kLookAfterKeyboard = WM_APP;

bool IsPushButton(HWND window) {
  if (::lstrcmpiA(ClassOfWindow(window).c_str(), "Button") != 0) return false;
  const LONG style = ::GetWindowLongA(window, GWL_STYLE);
  const LONG kind = style & BS_TYPEMASK;
  return (style & BS_PUSHLIKE) != 0 || kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON || kind == BS_OWNERDRAW;
}

// Enter presses the button that has the keyboard. The system presses the default button, which is another one or none where
// the keyboard came by something else than Tab, and never a drawn one. A key that is held presses once.
bool PressButtonByEnter(const MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN || !IsPushButton(message.hwnd)) return false;
  constexpr LPARAM kWasDown = 1 << 30;
  if ((message.lParam & kWasDown) == 0) ::SendMessageA(message.hwnd, BM_CLICK, 0, 0);
  return true;
}

}  // namespace

frmMain::frmMain()
    : host_(*this, {.main = main_, .clean = clean_, .shred = shred_, .scheduleManager = scheduleManager_}),
      main_(*this),
      clean_(host_),
      shred_(*this),
      scheduleManager_(*this),
      scheduler_(*this, scheduleManager_),
      stealth_(*this) {}

frmMain::~frmMain() {
  SetReporterTransfer(nullptr);
  MainWindowHandle = nullptr;
}

bool frmMain::Load(HWND owner) {
  RegisterMainWindowClass();
  if (Create(IDD_frmMain, owner) == nullptr) return false;
  RunStartUp(*this);
  return true;
}

void frmMain::OnInit() {
  MainWindowHandle = Handle();
  SetReporterTransfer(&Inet1);
  keys_ = ::LoadAcceleratorsA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDA_keys));
  ::SendMessageA(Handle(), WM_SETICON, ICON_BIG, static_cast<LPARAM>(::GetClassLongA(Handle(), GCL_HICON)));
  ::SendMessageA(Handle(), WM_SETICON, ICON_SMALL,
                 reinterpret_cast<LPARAM>(OwnIcon(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON))));
  stBar.Arrange(QUELLIX_CAPTION);
  bannerColour_.reset(::CreateSolidBrush(BarColour()));
  stealth_.Start(Handle());
  scheduler_.Start(Handle());
  PlacePanel(main_.Create(Handle()), rows_.back().button.Handle());
}

// The start, step by step

void frmMain::SaveCaption() { settings::SaveSetting(Setting::Titile, QUELLIX_CAPTION); }

void frmMain::ReadStoredSettings() { settings::ReadStoredSettings(erase::StoredItemFlags()); }

void frmMain::LoadEraseSettings() {
  for (const Row& row : rows_) resumeNext([&row] { row.panel.LoadEraseSettings(); });
}

void frmMain::LoadGeneralSettings() {
  scheduler_.Arm(Handle());
  reportAndLeave("frmMain,LoadGeneralSettings", [this] {
    for (const Row& row : rows_) row.panel.LoadGeneralSettings();
  });
}

void frmMain::NameTheSystem() { OsName = FindOS(); }

void frmMain::ShowWindow() {
  ::ShowWindow(Handle(), SW_SHOW);
  MainWindowWasShown = true;
  ::RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void frmMain::MakeOtherPanels() {
  for (std::size_t panel = 1; panel < rows_.size(); ++panel)
    PlacePanel(rows_[panel].panel.Create(Handle()), rows_[panel - 1].panel.Handle());
  resumeNext([] { late::CoInitialize(nullptr); });  // for the shell
}

bool frmMain::ErasesAtStart() { return Trim(Settings[Setting::Startup]) == "1"; }

void frmMain::AddIcon() {
  icon_.Fill(Handle(), reinterpret_cast<HICON>(::SendMessageA(Handle(), WM_GETICON, ICON_SMALL, 0)), QUELLIX_CAPTION);
  if (!stealth_.IsInvisible()) icon_.Add();  // the keys work during the erase before it
}

// The panels

std::string frmMain::StatusOf(const Row& row) {
  return PanelStatusText(row.statusName != nullptr ? row.statusName : row.button.Text());
}

// In the common place, and in the tab order after `after`.
void frmMain::PlacePanel(HWND panel, HWND after) {
  RECT place;
  ::GetWindowRect(::GetDlgItem(Handle(), IDC_panel), &place);
  ::MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&place), 2);
  ::SetWindowPos(panel, after, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
}

// The others are hidden, so that neither the keyboard nor a click reaches what lies beneath.
void frmMain::BringToFront(std::size_t panel) {
  shown_ = panel;
  ::ShowWindow(rows_[panel].panel.Handle(), SW_SHOW);
  for (std::size_t other = 0; other < rows_.size(); ++other)
    if (other != panel) ::ShowWindow(rows_[other].panel.Handle(), SW_HIDE);
  for (std::size_t row = 0; row < rows_.size(); ++row) rows_[row].button.Mark(row == panel);
  // A focus that is set in a hidden window leaves its title bar inactive when it shows.
  if (::IsWindowVisible(Handle())) LookAfterKeyboard();
}

// On a control that went away, or was disabled while another program was in front, no key would do anything.
void frmMain::LookAfterKeyboard() {
  const HWND focus = ::GetFocus();
  if (focus == nullptr || focus == Handle() || !::IsWindowVisible(focus) || !::IsWindowEnabled(focus))
    MoveFocusTo(rows_[shown_].button.Handle());
}

void frmMain::Navigate(std::size_t panel) {
  const Row& row = rows_[panel];
  SetStatusText(StatusOf(row));
  row.panel.BeforeFront();
  BringToFront(panel);
  row.panel.AfterFront();
}

void frmMain::GoToNeighbour(int steps) {
  Navigate(static_cast<std::size_t>(NeighbourPanel(static_cast<int>(shown_), steps, static_cast<int>(rows_.size()))));
}

bool frmMain::TranslateKey(MSG& message) {
  if (automation::Stealth::IsBossKey(message) || automation::Stealth::IsStealthKey(message)) return true;
  if (message.hwnd == Handle() || ::IsChild(Handle(), message.hwnd))
    if (::TranslateAcceleratorA(Handle(), keys_, &message) || PressButtonByEnter(message)) return true;
  return Dialog::TranslateKeys(message);
}

void frmMain::OnClick(int id) {
  const int key = id - IDA_panel_0;
  for (std::size_t panel = 0; panel < rows_.size(); ++panel)
    if (id == rows_[panel].button.Id() || key == static_cast<int>(panel)) return Navigate(panel);
  switch (id) {
    case IDM_mPopClean:
      stealth_.ComeBackFromMenu();
      ShowErasePanel();
      return EraseOnly();
    case IDM_mPopRestore:
      return stealth_.ComeBackFromMenu();
    case IDM_mPopExit:
      return AskToExit();
    case IDA_help:
      return help_.OpenHelp();
    case IDA_nextPanel:
      return GoToNeighbour(1);
    case IDA_previousPanel:
      return GoToNeighbour(-1);
  }
}

// Saving

void frmMain::SaveEraseSettings() {
  reportAndLeave("frmMain,SaveEraseSettings", [this] {
    automation::RegisterStartup();
    for (const Row& row : rows_) row.panel.KeepSettings();
    settings::WriteStoredSettings(erase::StoredItemFlags());
    if (shred_.HasListToSave()) shred_.SaveSettingsToFile();
  });
}

void frmMain::SaveAllSettings() {
  resumeNext([this] { SaveEraseSettings(); });
}

// Events

void frmMain::OnTimer(UINT_PTR timer) {
  if (timer == automation::timeHide) quietly([this] { icon_.TryAgain(); });
  stealth_.OnTimer(timer);
  scheduler_.OnTimer(timer);
}

std::optional<LRESULT> frmMain::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (icon_.TakeTaskbarNews(message)) return 0;
  switch (message) {
    case WM_COMMAND:
      return ForwardCommand(wParam, lParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_SIZE:
      // The window lives on in the notification area.
      if (wParam == SIZE_MINIMIZED) ::ShowWindow(Handle(), SW_HIDE);
      return {};
    case WM_SHOWWINDOW:
      // What a run did is kept again once the window is on show, whoever showed it.
      if (wParam != 0) NothingIsKept = false;
      // What is open over the window goes out of sight with it, and comes back with it.
      if (wParam == 0) AskedLog::HideTips();
      if (lParam == 0) ShowWindowsOver(Handle(), wParam != 0);
      return {};
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) ::PostMessageA(Handle(), kLookAfterKeyboard, 0, 0);
      return {};
    case kLookAfterKeyboard:
      if (::GetActiveWindow() == Handle() && ::IsWindowEnabled(Handle())) LookAfterKeyboard();
      return 0;
    case kTrayCallback:
      OnTrayCallback(wParam, lParam);
      return {};
    case WM_SYSCOLORCHANGE:
      bannerColour_.reset(::CreateSolidBrush(BarColour()));
      return {};
    case WM_CTLCOLORSTATIC: {
      const int id = ::GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
      if (id != IDC_Picture1 && id != IDC_Image1) return {};
      return reinterpret_cast<LRESULT>(bannerColour_.get());
    }
    case WM_QUERYENDSESSION:
      sessionEnd_.Ask(static_cast<std::uint32_t>(lParam));
      return TRUE;
    case WM_ENDSESSION:
      sessionEnd_.Decide(wParam != 0);
      return 0;
    default:
      return {};
  }
}

// Enter on a panel's button reaches the main window, because the keyboard is handled here; the panel gets its own.
bool frmMain::ForwardCommand(WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<HWND>(lParam);
  const HWND parent = control != nullptr ? ::GetParent(control) : nullptr;
  if (parent == nullptr || parent == Handle() || !::IsChild(Handle(), parent)) return false;
  ::SendMessageA(parent, WM_COMMAND, wParam, lParam);
  return true;
}

void frmMain::ForgetRuns() {
  clean_.ForgetRuns();
  shred_.ForgetRuns();
}

void frmMain::ShowIcon(bool shown) { shown ? icon_.Add() : icon_.Remove(); }

void frmMain::OnTrayCallback(WPARAM wParam, LPARAM lParam) {
  switch (icon_.ActionOf(wParam, lParam)) {
    case TrayAction::RestoreWindow:
      return stealth_.ComeBackFromIcon();
    case TrayAction::PopupMenu:
      return ShowIconMenu();
    case TrayAction::None:
      return;
  }
}

// While a question is open, it comes to the front and there is no menu.
void frmMain::ShowIconMenu() {
  ::SetForegroundWindow(WindowInFront(Handle()));
  if (!IsSomethingAsked()) icon_.ShowMenu();
}

void frmMain::AskToExit() {
  constexpr UINT kYesNoQuestion = MB_YESNO | MB_ICONQUESTION;
  static_assert(kYesNoQuestion == 36);
  if (AskUser("Are you sure you want to exit Quellix?", "Confirmation", kYesNoQuestion) == IDNO) return;
  resumeNext([this] { icon_.Remove(); });
  OnClose();
}

void frmMain::OnClose() {
  StopErase = true;
  Unload();
}

// The end of the session, step by step. It asks nobody anything and waits for no answer.

bool frmMain::ErasesAtSessionEnd() { return Settings[Setting::Shutdown] == "1"; }

void frmMain::TellSystemOfWork(bool atWork) {
  if (atWork)
    late::ShutdownBlockReasonCreate(Handle(), L"Quellix is erasing the selected items.");
  else
    late::ShutdownBlockReasonDestroy(Handle());
}

void frmMain::EraseBeforeSessionEnd() {
  const NoMessages nobodyIsThere;
  erase::RunAtSessionEnd(host_);
}

bool frmMain::IsRunInProgress() { return erase::RunInProgress; }
bool frmMain::StopRequested() { return StopErase; }
void frmMain::SetStopRequest(bool stop) { StopErase = stop; }

void frmMain::UnloadAtSessionEnd() {
  const NoMessages nobodyIsThere;
  Unload();
}

// The process ends here, also from inside a running erase; nothing touches the window afterwards. Saving lets window events
// run, and none of them starts a run any more.
void frmMain::Unload() {
  const erase::RunScope noOtherOne;
  resumeNext([this] { SaveAllSettings(); });
  resumeNext([this] { icon_.Remove(); });
  resumeNext([this] { stealth_.BringBrowsersBack(); });
  ForgetRuns();
  ::ExitProcess(0);
}

}  // namespace app
