#include "app/frmMain.h"

#include "app/quellix_ids.h"
#include "app/single_instance.h"
#include "app/timers.h"
#include "app/tray_callback.h"
#include "automation/restore_label.h"
#include "platform/ErroHandle.h"
#include "platform/product.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

namespace {

constexpr COLORREF kBannerGround = RGB(16, 28, 64);  // the banner's own ground, continued over the navigation bar

HICON OwnIcon(int width, int height) {
  return static_cast<HICON>(
      ::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_quellix), IMAGE_ICON, width, height, LR_SHARED));
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

// The boss key has no second meaning: F10 would choose the system menu when it is let go after a restore. With Alt held down
// it is another key.
bool IsBossKey(const MSG& message) {
  constexpr LPARAM kWithAlt = 1 << 29;
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_KEYUP || message.message == WM_SYSKEYDOWN ||
                     message.message == WM_SYSKEYUP;
  return isKey && message.wParam == static_cast<WPARAM>(settings::Settings.BossKeyCode) && (message.lParam & kWithAlt) == 0;
}

// Enter presses a button that has the keyboard. The system does that for its own buttons and not for drawn ones.
bool PressDrawnButton(const MSG& message) {
  char name[16] = "";
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
  ::GetClassNameA(message.hwnd, name, sizeof name);
  if (::lstrcmpiA(name, "Button") != 0 || (::GetWindowLongA(message.hwnd, GWL_STYLE) & BS_TYPEMASK) != BS_OWNERDRAW)
    return false;
  ::SendMessageA(message.hwnd, BM_CLICK, 0, 0);
  return true;
}

}  // namespace

frmMain::frmMain() : host_(panels_, *this), panels_(*this, host_) {}

frmMain::~frmMain() {
  SetReporterTransfer(nullptr);
  MainWindowHandle = nullptr;
}

bool frmMain::Load(HWND owner) {
  RegisterMainWindowClass();
  if (Create(IDD_frmMain, owner) == nullptr) return false;
  RunStartUp();
  return true;
}

void frmMain::OnInit() {
  MainWindowHandle = Handle();
  SetReporterTransfer(&Inet1);
  taskbarCreated_ = ::RegisterWindowMessageA("TaskbarCreated");
  keys_ = ::LoadAcceleratorsA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDA_keys));
  ::SendMessageA(Handle(), WM_SETICON, ICON_BIG,
                 reinterpret_cast<LPARAM>(OwnIcon(::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON))));
  ::SendMessageA(Handle(), WM_SETICON, ICON_SMALL,
                 reinterpret_cast<LPARAM>(OwnIcon(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON))));
  stBar.Arrange(QUELLIX_CAPTION);
  bannerColour_.reset(::CreateSolidBrush(kBannerGround));
  banner_.reset(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDB_banner), IMAGE_BITMAP, 0, 0, 0));
  ::SendDlgItemMessageA(Handle(), IDC_Image1, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(banner_.get()));
  StartTimers(Handle());
  PlacePanel(panels_.main.Create(Handle()), cmdHelp.Handle());
}

// In the common place, and in the tab order behind `after`.
void frmMain::PlacePanel(HWND panel, HWND after) {
  RECT place;
  ::GetWindowRect(::GetDlgItem(Handle(), IDC_panel), &place);
  ::MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&place), 2);
  ::SetWindowPos(panel, after, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
}

// The panels that the user does not see at first. Their hundred controls take as long as all the rest of the start, so
// they are made once the window is on the screen; what was loaded into them until then shows itself.
void frmMain::CreateOtherPanels() {
  HWND after = panels_.main.Handle();
  for (const HWND panel : {panels_.clean.Create(Handle()), panels_.shred.Create(Handle()),
                           panels_.scheduleManager.Create(Handle()), panels_.help.Create(Handle())}) {
    PlacePanel(panel, after);
    after = panel;
  }
}

HWND frmMain::PanelWindow(Panel panel) const {
  switch (panel) {
    case Panel::MainSettings:
      return panels_.main.Handle();
    case Panel::Erase:
      return panels_.clean.Handle();
    case Panel::SecureDeletion:
      return panels_.shred.Handle();
    case Panel::AdvanceSettings:
      return panels_.scheduleManager.Handle();
    case Panel::Help:
      return panels_.help.Handle();
  }
  return nullptr;
}

// The group box that a panel's controls stand in shows it.
std::string frmMain::PanelCaption() const {
  constexpr int kFrames[] = {IDC_fraMain, IDC_fraClean, IDC_fraShred, IDC_fraScheduleManager, IDC_fraHelp};
  char caption[80] = "";
  ::GetDlgItemTextA(PanelWindow(shown_), kFrames[static_cast<std::size_t>(shown_)], caption, sizeof caption);
  return caption;
}

Control& frmMain::NavigationButton(Panel panel) {
  Control* const buttons[] = {&cmdDefault, &cmdCleenFrame, &cmdSecureDelk, &cmdSchedule, &cmdHelp};
  return *buttons[static_cast<std::size_t>(panel)];
}

// The others are hidden, so that neither the keyboard nor a click reaches what lies beneath.
void frmMain::BringToFront(Panel panel) {
  shown_ = panel;
  ::ShowWindow(PanelWindow(panel), SW_SHOW);
  for (int other = 0; other < kPanelCount; ++other)
    if (static_cast<Panel>(other) != panel) ::ShowWindow(PanelWindow(static_cast<Panel>(other)), SW_HIDE);
  // A focus that is set in a hidden window leaves its title bar inactive when it shows.
  if (!::IsWindowVisible(Handle())) return;
  const HWND focus = ::GetFocus();
  if (focus == nullptr || !::IsWindowVisible(focus)) ::SetFocus(NavigationButton(panel).Handle());
}

void frmMain::Navigate(Panel panel) {
  const std::string status = PanelStatusText(panel, NavigationButton(panel).Text());
  if (panel == Panel::Erase) {
    SetStatusText(status);
    panels_.clean.lstCln.Clear();
    BringToFront(panel);
    if (panels_.clean.cmdClean.Text() != "Stop") panels_.clean.PbarClean.SetVisible(false);
    return;
  }
  BringToFront(panel);
  if (panel == Panel::AdvanceSettings) {
    panels_.scheduleManager.lblRestore.SetText(
        automation::RestoreLabelFromNavigation(panels_.scheduleManager.cmbBoss.Text()));
    panels_.scheduleManager.ClickScheduleEnabled();
  }
  SetStatusText(status);
}

bool frmMain::TranslateKey(MSG& message) {
  if (IsBossKey(message)) return true;
  if (message.hwnd == Handle() || ::IsChild(Handle(), message.hwnd))
    if (::TranslateAcceleratorA(Handle(), keys_, &message) || PressDrawnButton(message)) return true;
  return Dialog::TranslateKeys(message);
}

void frmMain::OnCommand(int id, int notification) {
  if (notification == BN_CLICKED && id >= IDC_cmdDefault && id <= IDC_cmdHelp)
    return Navigate(static_cast<Panel>(id - IDC_cmdDefault));
  switch (id) {
    case IDM_mPopClean:
      ShowAndActivateFromMenu();
      ShowErasePanel();
      return EraseOnly();
    case IDM_mPopRestore:
      return ShowAndActivateFromMenu();
    case IDM_mPopExit:
      return AskToExit();
    case IDA_nextPanel:
      return Navigate(NeighbourPanel(shown_, 1));
    case IDA_previousPanel:
      return Navigate(NeighbourPanel(shown_, -1));
    default:
      if (id >= IDA_panel_0 && id <= IDA_panel_4) Navigate(static_cast<Panel>(id - IDA_panel_0));
  }
}

}  // namespace app
