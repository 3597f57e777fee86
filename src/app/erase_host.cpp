#include "app/erase_host.h"

#include "automation/modReboot.h"
#include "cleaners/mdPanic.h"
#include "erase/catalogue.h"
#include "platform/ErroHandle.h"
#include "platform/clsIni.h"
#include "platform/message_box.h"
#include "platform/message_pump.h"
#include "platform/stop_request.h"
#include "platform/tally.h"
#include "settings/settings_variables.h"

namespace app {
using namespace platform;

bool EraseHost::CloseBrowsersFlag() { return settings::Settings.CloseBrowsers; }
std::span<const erase::EraseItem> EraseHost::Items() { return erase::Catalogue(); }
std::string EraseHost::ItemFlag(const erase::EraseItem& item) { return erase::ItemFlag(item); }
bool EraseHost::StopRequested() { return StopErase; }
void EraseHost::SetStopRequest(bool stop) { StopErase = stop; }

void EraseHost::TellEachFailureOnce(Statement run) {
  const ReportBurst burst;
  const ListeningScope scope(panels_.clean.RunTally());
  run();
}

// A stop request that is there afterwards came in the middle of it: otherwise it would not have begun.
void EraseHost::RunCleaner(erase::Cleaner cleaner) {
  resumeNext(cleaner);
  if (StopErase) TellStopped();
}

// A stop ends the pause as well, so that the run ends when its user asks for it and not up to a second later.
void EraseHost::PauseAfterItem() { Pause(1, &StopErase); }

void EraseHost::CloseBrowserFrames() { cleaners::CloseBrowserFrames(); }
void EraseHost::CloseWindowByTitle(const char* title) { cleaners::CloseWindowByTitle(title); }
void EraseHost::MinimiseAllWindows() { cleaners::MinimiseAllWindows(); }
void EraseHost::Reboot() {
  {
    const NoReports unattended;
    window_.SaveAllSettings();
  }
  automation::RebootSystem(true);
}

// While another box is open, for example the question whether to exit, a run of the scheduler adds none to it.
void EraseHost::ShowInformation(const char* text) {
  if (!IsSomethingAsked()) ShowMessage(text, MB_ICONINFORMATION);
}

}  // namespace app
