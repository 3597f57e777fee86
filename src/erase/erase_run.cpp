#include "erase/erase_run.h"

#include "platform/runtime_error.h"
#include "platform/text_value.h"

namespace erase {
using namespace platform;

namespace {

constexpr int kProgressPerItem = 10;

bool IsStopped(EraseRunHost& host) {
  bool stopped = false;
  resumeNext([&] { stopped = host.StopRequested(); });
  return stopped;
}

// A flag that is not a number does not select its item and does not stop the run.
bool IsSelected(EraseRunHost& host, const EraseItem& item) {
  bool selected = false;
  resumeNext([&] { selected = NumberOf(host.ItemFlag(item)) == 1.0; });
  return selected;
}

void RunItem(EraseRunHost& host, const EraseItem& item) {
  resumeNext([&] { host.SetProgressValue(host.ProgressValue() + kProgressPerItem); });
  if (item.logLine != nullptr) resumeNext([&] { host.AddLogLine(item.logLine); });
  if (item.cleaner != Cleaner::None) resumeNext([&] { host.RunCleaner(item.cleaner); });
  if (item.secondLogLine != nullptr) resumeNext([&] { host.AddLogLine(item.secondLogLine); });
  resumeNext([&] { host.PauseAfterItem(); });
}

void CloseBrowsersForSchedule(EraseRunHost& host) {
  if (!host.ScheduleEnabled() || !host.CloseBrowsersChecked()) return;
  resumeNext([&] { host.CloseBrowserFrames(); });
  resumeNext([&] { host.CloseWindowByTitle("Microsoft Internet Explorer"); });
  resumeNext([&] { host.CloseWindowByTitle("Netscape"); });
  resumeNext([&] { host.MinimiseAllWindows(); });
}

// The run of either button once its own preliminaries are done. False when nothing is selected.
bool RunFromButton(EraseRunHost& host, const char* nothingSelected) {
  const int count = host.SelectedItemCount();
  if (count == 0) {
    host.ShowInformation(nothingSelected);
    return false;
  }
  host.SetProgressRange(0, count * kProgressPerItem);
  host.EnableStopButton(true);
  host.SetStopRequest(false);
  doClean(host);
  host.EnableStopButton(false);
  host.SetStopRequest(true);
  return true;
}

}  // namespace

void doClean(EraseRunHost& host) {
  resumeNext([&] { host.ClearLog(); });
  resumeNext([&] { host.SetStatusText("Please Wait .."); });
  resumeNext([&] { CloseBrowsersForSchedule(host); });
  resumeNext([&] {
    if (host.ScheduledShredEnabled()) host.ShredScheduledFiles();
  });
  for (const EraseItem& item : kCatalogue)
    if (item.runs && IsSelected(host, item) && !IsStopped(host)) RunItem(host, item);
  resumeNext([&] { host.AddLogLine(""); });
  resumeNext([&] {
    host.AddLogLine(IsStopped(host) ? "Erasing was manually stopped." : "Quellix has successfully erased selected item(s).");
  });
  resumeNext([&] { host.SetProgressValue(host.ProgressMax()); });  // full, whether or not every step was taken
  resumeNext([&] { host.SetStatusText("Ready"); });
  resumeNext([&] {
    if (host.RebootAfterErase()) host.Reboot();
  });
}

void RunEraseOnly(EraseRunHost& host) {
  resumeNext([&] {
    if (host.StopButtonEnabled() || host.ClosingBrowsers()) return;  // a run is in progress
    if (host.CloseBrowsersFlag()) {
      host.CloseBrowserFrames();
      host.CloseWindowByTitle("Internet Explorer");
    }
    host.ShowProgress();
    RunFromButton(host, "No item(s) has been selected");
  });
}

void RunEraseAndReboot(EraseRunHost& host) {
  resumeNext([&] {
    host.ShowProgress();
    if (host.StopButtonEnabled() || host.ClosingBrowsers()) return;
    if (RunFromButton(host, "No Item Has Been Selected")) host.Reboot();
  });
}

}  // namespace erase
