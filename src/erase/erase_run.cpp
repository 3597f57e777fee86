#include "erase/erase_run.h"

#include "cleaners/locked_files.h"
#include "erase/run_in_progress.h"
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

void AddLogLine(EraseRunHost& host, const char* line) {
  if (line != nullptr) resumeNext([&] { host.View().AddLogLine(line); });
}

void RunItem(EraseRunHost& host, const EraseItem& item) {
  resumeNext([&] { host.View().SetProgressValue(host.View().ProgressValue() + kProgressPerItem); });
  AddLogLine(host, item.logLine);
  for (const Cleaner cleaner : {item.cleaner, item.secondCleaner})
    if (cleaner != nullptr) resumeNext([&] { host.RunCleaner(cleaner); });
  AddLogLine(host, item.secondLogLine);
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
  host.View().SetProgressRange(0, count * kProgressPerItem);
  host.View().EnableStopButton(true);
  host.SetStopRequest(false);
  doClean(host);
  host.View().EnableStopButton(false);
  host.SetStopRequest(true);
  return true;
}

void Run(EraseRunHost& host) {
  cleaners::LockedFiles.BeginRun();
  resumeNext([&] { host.View().ClearLog(); });
  resumeNext([&] { host.SetStatusText("Please Wait .."); });
  resumeNext([&] { CloseBrowsersForSchedule(host); });
  resumeNext([&] {
    if (host.ScheduledShredEnabled()) host.ShredScheduledFiles();
  });
  for (const EraseItem& item : host.Items())
    if (item.runs == Runs::Yes && IsSelected(host, item) && !IsStopped(host)) RunItem(host, item);
  AddLogLine(host, "");
  AddLogLine(host, IsStopped(host) ? "Erasing was manually stopped." : "Quellix has successfully erased selected item(s).");
  // Full, whether or not every step was taken.
  resumeNext([&] { host.View().SetProgressValue(host.View().ProgressMax()); });
  resumeNext([&] { host.SetStatusText("Ready"); });
  resumeNext([&] {
    if (host.RebootAfterErase()) host.Reboot();
  });
}

}  // namespace

void doClean(EraseRunHost& host) {
  host.TellEachFailureOnce([&host] { Run(host); });
}

void RunAtSessionEnd(EraseRunHost& host) {
  const RunScope run;
  doClean(host);
}

void RunEraseOnly(EraseRunHost& host) {
  if (RunInProgress) return;
  const RunScope run;
  resumeNext([&] {
    if (host.CloseBrowsersFlag()) {
      host.CloseBrowserFrames();
      host.CloseWindowByTitle("Internet Explorer");
    }
    host.View().ShowProgress();
    RunFromButton(host, "No item(s) has been selected");
  });
}

void RunEraseAndReboot(EraseRunHost& host) {
  resumeNext([&] {
    host.View().ShowProgress();
    if (RunInProgress) return;
    const RunScope run;
    if (RunFromButton(host, "No Item Has Been Selected")) host.Reboot();
  });
}

}  // namespace erase
