// The scheduled list: its file, its "Clear" and its part in an erase run.
#include "platform/ErroHandle.h"
#include "platform/message_pump.h"
#include "platform/native_files.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "platform/whole_file.h"
#include "shred/fraShred.h"
#include "shred/list_file.h"
#include "shred/modShred.h"

namespace shred {
using namespace platform;

namespace {

Path ListFile() { return ProgramFolder() / Wide<"QUELLIX_Shred">(); }

void ClearAttributes(const Path& path) { NativeSetAttributes(path, FILE_ATTRIBUTE_NORMAL); }

// A read-only file of that name is written all the same. When the writing fails, the old list stays whole.
void SaveList(const std::vector<WideText>& lines) {
  quietly([] { ClearAttributes(ListFile()); });
  quietly([&] { ReplaceWholeFile(ListFile(), ListFileText(lines)); });
}

}  // namespace

void fraShred::LoadFiles() {
  DoEvents();
  if (!Validate(ListFile())) return;
  const std::vector<WideText> lines = ReadListFile(ReadWholeFile(ListFile()));
  const ListBox::Filling quietly(lstFiles);
  lstFiles.Clear();
  for (const WideText& line : lines) lstFiles.AddItem(line);
}

void fraShred::SaveSettingsToFile() {
  const Walk walk(*this);
  std::vector<WideText> lines;
  for (int line = 0; line < lstFiles.ListCount(); ++line) {
    lines.push_back(lstFiles.Item(line));
    DoEventsNowAndThen();
  }
  SaveList(lines);
}

void fraShred::ClearScheduled() {
  ClearFiles(scheduled_);
  if (!Validate(ListFile())) return;
  resumeNext([] { ClearAttributes(ListFile()); });
  NativeDeleteFile(ListFile());
}

// A stop request that stands before the run is an earlier run's.
void fraShred::ShredDelete() {
  const bool* const cutShort = StopErase ? nullptr : &StopErase;
  const std::vector<WideText> ofTheFileAlone = scheduled_.LinesOfTheFileAlone();
  const bool changes = scheduled_.Count() > 0;
  reportAndLeave("frmMain,ShredDelete", [&] { RunShred(scheduled_, txtLevel.Text(), cutShort); });
  if (!changes) return;
  lstFiles.ListCount() > 0 ? SaveSettingsToFile() : SaveList(ofTheFileAlone);
}

}  // namespace shred
