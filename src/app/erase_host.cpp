#include "app/erase_host.h"

#include "app/mdSysTray.h"
#include "erase/run_cleaner.h"
#include "platform/app_title.h"
#include "platform/message_pump.h"
#include "platform/stop_request.h"
#include "settings/settings_variables.h"

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
bool EraseHost::CloseBrowsersFlag() { return Settings.CloseBrowsers; }
bool EraseHost::ScheduledShredEnabled() { return panels_.shred.chkOptions.Value() == 1; }
bool EraseHost::RebootAfterErase() { return panels_.scheduleManager.chkRbt.Value() == 1; }

int EraseHost::SelectedItemCount() { return panels_.main.SelectedItemCount(); }
std::string EraseHost::ItemFlag(const EraseItem& item) { return Settings[item.flag]; }
bool EraseHost::StopRequested() { return StopErase; }
void EraseHost::SetStopRequest(bool stop) { StopErase = stop; }
void EraseHost::RunCleaner(Cleaner cleaner) { ::RunCleaner(cleaner); }

// A stop ends the pause as well, so that the run ends when its user asks for it and not up to a second later.
void EraseHost::PauseAfterItem() { Pause(1, &StopErase); }

// docs/status.md lists what is still to come: closing browsers, the scheduled shred, the reboot.
void EraseHost::CloseBrowserFrames() {}
void EraseHost::CloseWindowByTitle(const char*) {}
void EraseHost::MinimiseAllWindows() { ::MinimiseAllWindows(); }
void EraseHost::ShredScheduledFiles() {}
void EraseHost::Reboot() {}

void EraseHost::ShowInformation(const char* text) {
  ::MessageBoxA(window_.Window(), text, AppTitle.c_str(), MB_ICONINFORMATION);
}
