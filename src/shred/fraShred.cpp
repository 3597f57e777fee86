#include "shred/fraShred.h"

#include "cleaners/locked_files.h"
#include "platform/ErroHandle.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/stop_request.h"
#include "shred/dropped_files.h"
#include "shred/folder_removal.h"
#include "shred/list_store.h"
#include "shred/modShred.h"
#include "shred/open_files.h"
#include "shred/shred_run.h"

namespace shred {
using namespace platform;

namespace {

constexpr int kLevelAtStart = 50;
constexpr int kHighestLevel = 100;
constexpr char kStatusAtRest[] = "Status";

bool IsThere(const Path& path) { return NativeAttributes(path) != INVALID_FILE_ATTRIBUTES; }

}  // namespace

fraShred::fraShred(MainWindow& window) : Panel(IDD_fraShred, IDC_fraShred), window_(window) {
  for (SpinButton* spin : {&UpDown1, &UpDown2}) {
    spin->SetRange(0, kHighestLevel);
    spin->SetValue(kLevelAtStart);  // and writes it into the level box
  }
}

void fraShred::LoadEraseSettings() {
  resumeNext([this] { chkOptions.Load(); });
  resumeNext([this] { txtLevel.Load(); });
}

void fraShred::KeepSettings() {
  chkOptions.Keep();
  txtLevel.Keep();
}

void fraShred::OnClick(int id) {
  if (walks_ == 0) Press(id);
}

void fraShred::Press(int id) {
  switch (id) {
    case IDC_cmdFileShred:
      AddFiles(manual_);
      return;
    case IDC_cmdClear:
      return ClearFiles(manual_);
    case IDC_cmdshredFiles:
      return ShredManually();
    case IDC_cmdAddFolder:
      return AddFolder();
    case IDC_cmdFolClear:
      return folders_.Clear();
    case IDC_cmdShredFolder:
      return ShredFolders();
    case IDC_cmdShredAll:
      ShredFolders();
      return ShredManually();
    case IDC_cmdCustomAdd:
      if (AddFiles(scheduled_)) SaveSettingsToFile();
      return;
    case IDC_cmdCustomDeleteAll:
      return ClearScheduled();
  }
}

std::optional<LRESULT> fraShred::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DROPFILES) {
    TakeDrop(wParam);
    return 0;
  }
  if (message == WM_VKEYTOITEM) {
    constexpr LRESULT kTheListGoesOn = -1;
    if (LOWORD(wParam) == VK_DELETE && walks_ == 0) RemoveSelected(reinterpret_cast<HWND>(lParam));
    return kTheListGoesOn;
  }
  return {};
}

void fraShred::ShowFileCount(int count) { FileCount.SetText(FilesReady(count)); }

void fraShred::ResetStatus() {
  PbarShred.SetRange(0, 100);
  lStat.SetText(kStatusAtRest);
  FileCount.SetText("");
  ::UpdateWindow(Handle());
}

// Both buttons "Add Files"; they share the tag. True when there are new files on the list.
bool fraShred::AddFiles(ShredList& list) {
  std::vector<Path> paths;
  reportAndLeave("frmMain,cmdCustomAdd", [&] {
    paths = AskForFiles(window_.Window());
    if (paths.empty()) return;
    const ListBox::Filling quietly(list.List());
    for (const Path& path : paths) list.Add(path);
    ShowFileCount(list.Count());
  });
  return !paths.empty();
}

// The bar takes a step for each entry.
void fraShred::ClearFiles(ShredList& list) {
  PbarShred.SetRange(0, list.Count());
  for (int step = 1; step <= list.Count(); ++step) PbarShred.SetValue(step);
  list.Clear();
  ResetStatus();
}

void fraShred::ShredManually() {
  if (lstFileShred.ListCount() == 0) {
    ShowMessage("File List is Empty", MB_ICONEXCLAMATION);
    return;
  }
  cleaners::LockedFiles.BeginRun();
  txtMessage.SetText(MessageBefore(txtLev.Text()));
  const int count = manual_.Count();
  if (count > 0) txtMessage.SetText(SecondMessageBefore(txtLevel.Text()));
  const int shredded = RunShred(manual_, txtLev.Text(), nullptr);
  ClearFiles(manual_);
  txtMessage.SetText(FilesShredded(shredded, count));
}

// Gives the number of files that were shredded. Errors are told where they arise. `*cutShort`, when given, ends the run
// after the file in hand as soon as it is true; the others stay on the list.
int fraShred::RunShred(ShredList& list, const std::string& level, const bool* cutShort) {
  if (list.Count() == 0) {
    ShowMessage("Error: Enter a file for shredding!", MB_ICONERROR);
    return 0;
  }
  const Walk walk(*this);
  DoEvents();
  const std::vector<Path> paths = list.Collection();
  PbarShred.SetRange(0, list.Count());
  ShredRun run(static_cast<int>(paths.size()));
  const ReportBurst burst;
  while (run.GoesOn(cutShort != nullptr && *cutShort)) {
    const Path& path = paths[static_cast<std::size_t>(run.Steps())];
    const bool wasThere = IsThere(path);
    const int reports = burst.Reports();
    quietly([&] { ShredFile(path, level); });
    run.Add({.wasThere = wasThere, .isThere = IsThere(path), .failed = burst.Reports() != reports});
    quietly([&] { ShowStep(run.Steps(), run.Count()); });
  }
  list.RemoveFirst(run.Steps());
  ResetStatus();
  return run.Shredded();
}

// The range each time: a run of the scheduled list in the middle of a manual one has set its own.
void fraShred::ShowStep(int step, int count) {
  if (PbarShred.Max() != count) PbarShred.SetRange(0, count);
  PbarShred.SetValue(step);
}

void fraShred::AddFolder() {
  const Path folder = addDir_.ShowModal(window_.Window());
  if (!folder.IsEmpty()) folders_.Add(folder);
}

void fraShred::ShredFolders() {
  if (lstFolder.ListCount() == 0) {
    ShowMessage("Folder List is Empty", MB_ICONEXCLAMATION);
    return;
  }
  const Walk walk(*this);
  cleaners::LockedFiles.BeginRun();
  int gone = 0;
  const std::vector<Path> folders = folders_.Collection();
  for (const Path& folder : folders) {
    const bool wasThere = FolderCheck(folder);
    resumeNext([&] {
      if (wasThere) ShredFolder(folder);
    });
    gone += wasThere && !FolderCheck(folder) ? 1 : 0;
  }
  folders_.Clear();
  txtMessage.SetText(FoldersDeleted(gone, static_cast<int>(folders.size())));
}

void fraShred::RemoveSelected(HWND list) {
  if (list == lstFileShred.Handle()) RemoveSelectedFiles(manual_);
  if (list == lstFolder.Handle()) folders_.RemoveSelected();
  if (list == lstFiles.Handle() && !lstFiles.Selected().empty()) {
    RemoveSelectedFiles(scheduled_);
    SaveSettingsToFile();
  }
}

void fraShred::RemoveSelectedFiles(ShredList& list) {
  list.RemoveSelected();
  ShowFileCount(list.Count());
}

// On one of the manual lists everything goes where it belongs, folders to the folders; the scheduled one takes files alone.
void fraShred::TakeDrop(WPARAM drop) {
  const DroppedFiles dropped = TakeDroppedFiles(drop);
  const HWND at = ::ChildWindowFromPoint(Handle(), dropped.place);
  const bool scheduled = at == lstFiles.Handle();
  if (walks_ > 0 || (!scheduled && at != lstFileShred.Handle() && at != lstFolder.Handle())) return;
  ShredList& files = scheduled ? scheduled_ : manual_;
  const int before = files.Count();
  for (const Path& path : dropped.paths) {
    if (!IsFolder(NativeAttributes(path)))
      files.Add(path);
    else if (!scheduled)
      folders_.Add(path);
  }
  if (files.Count() != before) ShowFileCount(files.Count());
  if (scheduled) SaveSettingsToFile();
}

// The scheduled list

void fraShred::LoadFiles() {
  DoEvents();
  const std::optional<std::vector<WideText>> lines = StoredList();
  if (!lines) return;
  const ListBox::Filling quietly(lstFiles);
  lstFiles.Clear();
  for (const WideText& line : *lines) lstFiles.AddItem(line);
}

void fraShred::SaveSettingsToFile() {
  const Walk walk(*this);
  std::vector<WideText> lines;
  for (int line = 0; line < lstFiles.ListCount(); ++line) {
    lines.push_back(lstFiles.Item(line));
    DoEventsNowAndThen();
  }
  StoreList(lines);
}

void fraShred::ClearScheduled() {
  ClearFiles(scheduled_);
  DeleteStoredList();
}

// A stop request that was there before the run is an earlier run's.
void fraShred::ShredDelete() {
  const bool* const cutShort = StopErase ? nullptr : &StopErase;
  const std::vector<WideText> ofTheFileAlone = scheduled_.LinesOfTheFileAlone();
  const bool changes = scheduled_.Count() > 0;
  reportAndLeave("frmMain,ShredDelete", [&] { RunShred(scheduled_, txtLevel.Text(), cutShort); });
  if (!changes) return;
  lstFiles.ListCount() > 0 ? SaveSettingsToFile() : StoreList(ofTheFileAlone);
}

}  // namespace shred
