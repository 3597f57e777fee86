#include "shred/fraShred.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "cleaners/locked_files.h"
#include "platform/ErroHandle.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/wide_system.h"
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
constexpr char kAddTag[] = "frmMain,cmdCustomAdd";  // of both buttons "Add Files"

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
      ShredManually();
      return;
    case IDC_cmdAddFolder:
      return AddFolder();
    case IDC_cmdFolClear:
      return folders_.Clear();
    case IDC_cmdShredFolder:
      ShredFolders();
      return;
    case IDC_cmdShredAll:
      return ShredAll();
    case IDC_cmdCustomAdd:
      reportAndLeave(kAddTag, [this] {
        if (AddFiles(scheduled_)) SaveSettingsToFile();
      });
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

fraShred::Run::Run(fraShred& panel) : Walk(panel), runs_(panel.runs_), listening_(panel.asked_.OfRun()) {
  if (runs_++ > 0) return;
  panel.asked_.Clear();
  panel.asked_.OfRun().AddLine();
}

void fraShred::ShowFileCount(int count) { FileCount.SetText(FilesReady(count)); }

void fraShred::ResetStatus() {
  PbarShred.SetRange(0, 100);
  lStat.SetText(kStatusAtRest);
  FileCount.SetText("");
  ::UpdateWindow(Handle());
}

// True when there are new files on the list. The count is told of a dialog that was cancelled, too: before it, it may have
// been the other list's.
bool fraShred::AddFiles(ShredList& list) {
  std::vector<Path> paths;
  reportAndLeave(kAddTag, [&] {
    paths = AskForFiles(window_.Window());
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

// Gives what was done, as the panel shows it.
std::string fraShred::ShredManually() {
  if (lstFileShred.ListCount() == 0) {
    ShowMessage("File List is Empty", MB_ICONEXCLAMATION);
    return "";
  }
  cleaners::LockedFiles.BeginRun();
  txtMessage.SetText(MessageBefore(txtLev.Text()));
  if (manual_.Count() > 0) txtMessage.SetText(SecondMessageBefore(txtLevel.Text()));
  std::string outcome = RunShred(manual_, txtLev, nullptr);
  ClearFiles(manual_);
  txtMessage.SetText(outcome);
  return outcome;
}

// Gives what was done; nothing for an empty list. Errors are told where they arise. The level is what its box says at each
// file. `*cutShort`, when given, ends the run after the file in hand as soon as it is true. What is gone leaves the list at
// once: the window may be closed in the middle.
std::string fraShred::RunShred(ShredList& list, const TextBox& level, const bool* cutShort) {
  ShredRun run(list.Count());
  if (run.Count() == 0) {
    ShowMessage("Error: Enter a file for shredding!", MB_ICONERROR);
    return "";
  }
  const Run shredding(*this);
  DoEvents();
  PbarShred.SetRange(0, run.Count());
  const ReportBurst burst;
  while (run.GoesOn(cutShort != nullptr && *cutShort)) {
    const int place = run.Steps();
    ShreddedFile file{.before = Presence::OutOfReach, .after = Presence::OutOfReach, .failure = ""};
    std::string name;
    // What fails at one file, even the telling of its name, keeps no other one from its turn.
    quietly([&] {
      const Path path = list.Collection()[static_cast<std::size_t>(place)];
      file.before = PresenceOf(path);
      RuntimeError failure;
      const RuntimeError broken = failureOf([&] { failure = ShredFile(path, level.Text()); });
      file.failure = failure ? failure.description : broken.description;
      file.after = failure || broken ? PresenceOf(path) : Presence::Gone;
      name = Narrow(path.Shown());
      if (file.after == Presence::OutOfReach) TellStayed(path, Why::OutOfReach);
    });
    quietly([&] { run.Add(file, name); });
    if (LeavesTheList(file)) list.MarkGone(place);
    fileHasMore_ |= LeavesTheList(file) && &list == &scheduled_;
    quietly([&] { ShowStep(run.Steps(), run.Count()); });
    DoEventsNowAndThen();  // one of them may end the program, and what is gone has left the list
  }
  if (run.Steps() < run.Count()) TellStopped();
  list.RemoveGone();
  ResetStatus();
  ShowFileCount(list.Count());
  return run.Outcome();
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

// Gives what was done, as the panel shows it.
std::string fraShred::ShredFolders() {
  if (lstFolder.ListCount() == 0) {
    ShowMessage("Folder List is Empty", MB_ICONEXCLAMATION);
    return "";
  }
  const Run shredding(*this);
  cleaners::LockedFiles.BeginRun();
  int gone = 0;
  std::string refusals;
  const std::vector<Path> folders = folders_.Collection();
  for (const Path& folder : folders) {
    if (!FolderCheck(folder)) continue;
    resumeNext([&] {
      const cleaners::FolderRefusal refusal = ShredFolder(folder);
      // It is there by its name, and could not be opened.
      const bool isClosed = refusal == cleaners::FolderRefusal::NoFolder;
      TellStayed(folder, isClosed ? Why::OutOfReach : cleaners::WhyOf(refusal));
      if (refusal != cleaners::FolderRefusal::None) refusals += " " + NeverShredded(Narrow(folder.Shown()), refusal);
    });
    gone += FolderCheck(folder) ? 0 : 1;
  }
  folders_.Clear();
  std::string outcome = FoldersDeleted(gone, static_cast<int>(folders.size())) + refusals;
  txtMessage.SetText(outcome);
  return outcome;
}

// Both are told of at the end.
void fraShred::ShredAll() {
  std::optional<Run> both;
  if (lstFolder.ListCount() > 0 || lstFileShred.ListCount() > 0) both.emplace(*this);
  std::string ofFolders;
  std::string ofFiles;
  resumeNext([&] { ofFolders = ShredFolders(); });
  resumeNext([&] { ofFiles = ShredManually(); });
  if (!ofFolders.empty() && !ofFiles.empty()) txtMessage.SetText(ofFolders + " " + ofFiles);
}

void fraShred::RemoveSelected(HWND list) {
  if (list == lstFileShred.Handle()) RemoveSelectedFiles(manual_);
  if (list == lstFolder.Handle()) folders_.RemoveSelected();
  if (list == lstFiles.Handle() && !lstFiles.Selected().empty()) {
    RemoveSelectedFiles(scheduled_);
    resumeNext([this] { SaveSettingsToFile(); });
  }
}

void fraShred::RemoveSelectedFiles(ShredList& list) {
  list.RemoveSelected();
  ShowFileCount(list.Count());
}

// By their places: the system would name the group box around them.
HWND fraShred::ListAt(POINT place) const {
  for (const ListBox* list : {&lstFileShred, &lstFolder, &lstFiles}) {
    RECT area;
    ::GetWindowRect(list->Handle(), &area);
    ::MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&area), 2);
    if (::PtInRect(&area, place)) return list->Handle();
  }
  return nullptr;
}

// On one of the manual lists everything goes where it belongs, folders to the folders; the scheduled one takes files alone.
void fraShred::TakeDrop(WPARAM drop) {
  const DroppedFiles dropped = TakeDroppedFiles(drop);
  const HWND at = ListAt(dropped.place);
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
  if (scheduled) resumeNext([this] { SaveSettingsToFile(); });
}

// The scheduled list

void fraShred::LoadFiles() {
  DoEvents();
  std::optional<std::vector<WideText>> lines;
  fileUnread_ = static_cast<bool>(failureOf([&] { lines = StoredList(); }));
  if (!lines) return;
  const ListBox::Filling quietly(lstFiles);
  lstFiles.Clear();
  for (const WideText& line : *lines) lstFiles.AddItem(line);
}

void fraShred::SaveSettingsToFile() {
  const Walk walk(*this);
  TellIfNotSaved([this] { TakeUnreadLines(); });
  std::vector<WideText> lines;
  for (WideText& line : scheduled_.Lines()) {
    lines.push_back(std::move(line));
    DoEventsNowAndThen();
  }
  TellIfNotSaved([&] { StoreList(lines); });
  fileHasMore_ = false;
}

// What could not be read at the start joins the list before the file is replaced. Raises as long as it cannot be read.
void fraShred::TakeUnreadLines() {
  if (!fileUnread_) return;
  if (const std::optional<std::vector<WideText>> lines = StoredList())
    for (const WideText& line : *lines) lstFiles.AddItem(line);
  fileUnread_ = false;
}

// The change would be lost at the next start, and the report of it shows on line alone.
void fraShred::TellIfNotSaved(Statement save) {
  const RuntimeError failure = failureOf(save);
  if (!failure) return;
  txtMessage.SetText(ListNotSaved(failure.description));
  throw failure;
}

void fraShred::ClearScheduled() {
  ClearFiles(scheduled_);
  TellIfNotSaved([] { DeleteStoredList(); });
  fileHasMore_ = false;
  fileUnread_ = false;
}

// A stop request that was there before the run is an earlier run's.
void fraShred::ShredDelete() {
  const bool* const cutShort = StopErase ? nullptr : &StopErase;
  reportAndLeave("frmMain,ShredDelete", [&] {
    const std::string outcome = RunShred(scheduled_, txtLevel, cutShort);
    if (!outcome.empty()) txtMessage.SetText(outcome);
    if (fileHasMore_) SaveSettingsToFile();
  });
}

}  // namespace shred
