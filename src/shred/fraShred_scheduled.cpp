// The scheduled list: its file, its "Clear" and its part in an erase run.
#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/path_text.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/whole_file.h"
#include "shred/fraShred.h"
#include "shred/list_file.h"
#include "shred/modShred.h"

namespace shred {
using namespace platform;

namespace {

std::string ListFile() { return AppendBackslash(ProgramFolder()) + "QUELLIX_Shred"; }

void ClearAttributes(const std::string& path) { NativeSetAttributes(ToNativePath(path), FILE_ATTRIBUTE_NORMAL); }

// A read-only file of that name is written all the same. When the writing fails, the old list stays whole.
void SaveList(const std::vector<std::string>& paths) {
  quietly([] { ClearAttributes(ListFile()); });
  quietly([&] { ReplaceWholeFile(ListFile(), ListFileText(paths)); });
}

}  // namespace

void fraShred::LoadFiles() {
  DoEvents();
  if (!Validate(ListFile())) return;
  const std::vector<std::string> lines = ReadListFile(ReadWholeFile(ListFile()));
  const ListBox::Filling quietly(lstFiles);
  lstFiles.Clear();
  for (const std::string& line : lines) lstFiles.AddItem(line);
}

void fraShred::SaveSettingsToFile() {
  const Walk walk(*this);
  std::vector<std::string> paths;
  for (int line = 0; line < lstFiles.ListCount(); ++line) {
    paths.push_back(lstFiles.Item(line));
    DoEventsNowAndThen();
  }
  SaveList(paths);
}

void fraShred::ClearScheduled() {
  ClearFiles(scheduled_);
  if (!Validate(ListFile())) return;
  resumeNext([] { ClearAttributes(ListFile()); });
  NativeDeleteFile(ToNativePath(ListFile()));
}

// A stop request that stands before the run is an earlier run's.
void fraShred::ShredDelete() {
  const bool* const cutShort = StopErase ? nullptr : &StopErase;
  const std::vector<std::string> ofTheFileAlone = scheduled_.LinesOfTheFileAlone();
  const bool changes = scheduled_.Count() > 0;
  reportAndLeave("frmMain,ShredDelete", [&] { RunShred(scheduled_, txtLevel.Text(), cutShort); });
  if (!changes) return;
  lstFiles.ListCount() > 0 ? SaveSettingsToFile() : SaveList(ofTheFileAlone);
}

}  // namespace shred
