#include "shred/frmAddDir.h"

#include <cstddef>
#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/wide_system.h"
#include "shred/subfolders.h"

namespace shred {
using namespace platform;

namespace {
constexpr char kDriveAtStart[] = "C:";

Path RootOf(const std::string& drive) { return FullPath(AppendBackslash(Widen(drive))); }

}  // namespace

Path frmAddDir::ShowModal(HWND owner) {
  chosen_ = Path();
  if (Handle() == nullptr) RunModal(IDD_frmAddDir, owner);
  return chosen_;
}

void frmAddDir::OnInit() {
  shown_ = {};
  for (const std::string& drive : Drives()) drvList.AddItem(drive);
  drvList.Choose(kDriveAtStart);
  resumeNext([this] { Open(RootOf(kDriveAtStart)); });
  MoveFocusTo(dirList.Handle());
}

void frmAddDir::OnNotification(int id, int notification) {
  if (id == IDC_drvList && notification == CBN_SELCHANGE) ChangeDrive();
  if (id == IDC_dirList && notification == LBN_DBLCLK) OpenSelected();
  if (id == IDC_dirList) ShowWhatEnterDoes();
}

// The system looks for a letter at the beginning of a line, where the blanks are.
bool frmAddDir::OnKey(const MSG& message) {
  if (message.message != WM_CHAR || message.hwnd != dirList.Handle() || message.wParam <= ' ') return false;
  ChooseByLetter(static_cast<char>(message.wParam));
  return true;
}

void frmAddDir::ChooseByLetter(char letter) {
  const int line = NextLineWith(shown_, dirList.ListIndex(), Widen(std::string(1, letter)));
  if (line < 0) return;
  dirList.Select(line);
  ShowWhatEnterDoes();
}

// "Add" looks like the default button where Enter adds. In the list it opens a folder that is not the opened one, as a
// double click does: then no button is the default.
void frmAddDir::ShowWhatEnterDoes() {
  const bool opens = ::GetFocus() == dirList.Handle() && dirList.ListIndex() != shown_.opened;
  ::SendMessageA(Handle(), DM_SETDEFID, opens ? 0 : IDC_cmdAdd, 0);
}

void frmAddDir::OnClick(int id) {
  if (id == IDC_cmdCancel) return Close();
  if (id == IDOK) return OpenSelected();  // Enter where no button is the default
  if (id == IDC_cmdAdd) Add();
}

// A folder that cannot be read is not opened; what is shown stays.
void frmAddDir::Open(const Path& folder) {
  shown_ = LinesOfFolder(folder, Subfolders(folder));
  const ListBox::Filling quietly(dirList);
  dirList.Clear();
  for (const FolderLine& line : shown_.lines) dirList.AddItem(line.text);
  dirList.Select(shown_.opened);
  ShowWhatEnterDoes();
}

void frmAddDir::OpenSelected() {
  const int line = dirList.ListIndex();
  if (line >= 0) resumeNext([&] { Open(Path(shown_.lines[static_cast<std::size_t>(line)].path)); });
}

void frmAddDir::ChangeDrive() {
  if (failureOf([this] { Open(RootOf(drvList.Text())); })) ShowDrive();
}

// The drive of the folder that the list shows.
void frmAddDir::ShowDrive() {
  if (!shown_.lines.empty()) drvList.Choose(Narrow(DrivePart(shown_.lines.front().text)));
}

void frmAddDir::Add() {
  const int line = dirList.ListIndex();
  if (line < 0) return;
  chosen_ = shown_.lines[static_cast<std::size_t>(line)].path;
  Close();
}

}  // namespace shred
