#include "app/erase_host.h"

#include "automation/modReboot.h"
#include "cleaners/mdPanic.h"
#include "erase/run_cleaner.h"
#include "platform/app_title.h"
#include "platform/message_pump.h"
#include "platform/stop_request.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

void EraseHost::ClearLog() { panels_.clean.lstCln.Clear(); }

void EraseHost::AddLogLine(const std::string& line) {
  panels_.clean.lstCln.AddItem(line);
  panels_.clean.lstCln.ShowLast();
}

void EraseHost::SetStatusText(const std::string& text) { window_.SetStatusText(text); }
int EraseHost::ProgressValue() { return panels_.clean.PbarClean.Value(); }
int EraseHost::ProgressMax() { return panels_.clean.PbarClean.Max(); }
void EraseHost::SetProgressValue(int value) { panels_.clean.PbarClean.SetValue(value); }
void EraseHost::SetProgressRange(int min, int max) { panels_.clean.PbarClean.SetRange(min, max); }
void EraseHost::ShowProgress() { panels_.clean.PbarClean.SetVisible(true); }
bool EraseHost::StopButtonEnabled() { return panels_.clean.cmdStop.Enabled(); }
void EraseHost::EnableStopButton(bool enabled) { panels_.clean.cmdStop.SetEnabled(enabled); }

bool EraseHost::ScheduleEnabled() { return panels_.scheduleManager.chkShEnable.Value() == 1; }
bool EraseHost::CloseBrowsersChecked() { return panels_.scheduleManager.CHKieclose.Value() == 1; }
bool EraseHost::CloseBrowsersFlag() { return settings::Settings.CloseBrowsers; }
bool EraseHost::ScheduledShredEnabled() { return panels_.shred.chkOptions.Value() == 1; }
bool EraseHost::RebootAfterErase() { return panels_.scheduleManager.chkRbt.Value() == 1; }

int EraseHost::SelectedItemCount() { return panels_.main.SelectedItemCount(); }
std::string EraseHost::ItemFlag(const erase::EraseItem& item) { return settings::Settings[item.flag]; }
bool EraseHost::StopRequested() { return StopErase; }
void EraseHost::SetStopRequest(bool stop) { StopErase = stop; }
void EraseHost::RunCleaner(erase::Cleaner cleaner) { erase::RunCleaner(cleaner); }

// A stop ends the pause as well, so that the run ends when its user asks for it and not up to a second later.
void EraseHost::PauseAfterItem() { Pause(1, &StopErase); }

void EraseHost::CloseBrowserFrames() {
  closingBrowsers_ = true;
  cleaners::CloseBrowserFrames();
  closingBrowsers_ = false;
}

bool EraseHost::ClosingBrowsers() { return closingBrowsers_; }
void EraseHost::CloseWindowByTitle(const char* title) { cleaners::CloseWindowByTitle(title); }
void EraseHost::MinimiseAllWindows() { cleaners::MinimiseAllWindows(); }
void EraseHost::ShredScheduledFiles() { panels_.shred.ShredDelete(); }
void EraseHost::Reboot() { automation::RebootSystem(true); }

void EraseHost::ShowInformation(const char* text) {
  // While another box is open, say the question whether to exit, a run of the scheduler adds none to it.
  if (::IsWindowEnabled(window_.Window())) ::MessageBoxA(window_.Window(), text, AppTitle.c_str(), MB_ICONINFORMATION);
}

}  // namespace app
