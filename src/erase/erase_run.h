// The order of an erase run, without a window: which items run, what the log and the bar show, where a stop takes effect.
#pragma once

#include <span>
#include <string>

#include "erase/erase_item.h"
#include "platform/runtime_error.h"

namespace erase {

// Where a run shows itself: the panel "Erase".
class RunView {
 public:
  virtual void ClearLog() = 0;
  virtual void AddLogLine(const std::string& line) = 0;

  virtual int ProgressValue() = 0;
  virtual int ProgressMax() = 0;
  virtual void SetProgressValue(int value) = 0;
  virtual void SetProgressRange(int min, int max) = 0;
  virtual void ShowProgress() = 0;

  virtual void EnableStopButton(bool enabled) = 0;

 protected:
  ~RunView() = default;
};

// What else a run needs of the window and of other rooms.
class EraseRunHost {
 public:
  virtual RunView& View() = 0;
  virtual void SetStatusText(const std::string& text) = 0;

  // Boxes of other panels that a run asks for.
  virtual bool ScheduleEnabled() = 0;        // chkShEnable
  virtual bool CloseBrowsersChecked() = 0;   // the box CHKieclose
  virtual bool CloseBrowsersFlag() = 0;      // the flag kept from it
  virtual bool ScheduledShredEnabled() = 0;  // chkOptions
  virtual bool RebootAfterErase() = 0;       // chkRbt

  // In the order in which they run.
  virtual std::span<const EraseItem> Items() = 0;
  virtual int SelectedItemCount() = 0;  // boxes whose Value is 1
  virtual std::string ItemFlag(const EraseItem& item) = 0;
  virtual bool StopRequested() = 0;
  virtual void SetStopRequest(bool stop) = 0;

  // Runs it all. What fails in it with one message is told once: two items may share a cleaner.
  virtual void TellEachFailureOnce(platform::Statement run) = 0;

  virtual void RunCleaner(Cleaner cleaner) = 0;
  virtual void PauseAfterItem() = 0;
  virtual void CloseBrowserFrames() = 0;  // returns when none is left
  virtual void CloseWindowByTitle(const char* title) = 0;
  virtual void MinimiseAllWindows() = 0;
  virtual void ShredScheduledFiles() = 0;
  virtual void Reboot() = 0;
  virtual void ShowInformation(const char* text) = 0;

 protected:
  ~EraseRunHost() = default;
};

// Every call of the two above may raise a RuntimeError; the run goes on with its next statement.

// One run over the selected items. Callers: those below.
void doClean(EraseRunHost& host);

// The run at the end of the session: no press and no tick starts another one meanwhile.
void RunAtSessionEnd(EraseRunHost& host);

// "Erase Only". Does nothing while a run is in progress.
void RunEraseOnly(EraseRunHost& host);

// "Erase && Reboot". The same, but for the bar, which shows itself first.
void RunEraseAndReboot(EraseRunHost& host);

}  // namespace erase
