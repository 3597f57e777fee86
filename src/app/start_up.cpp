#include "app/start_up.h"

#include "platform/runtime_error.h"

namespace app {
using namespace platform;

void RunStartUp(StartUpSteps& steps) {
  resumeNext([&] { steps.SaveCaption(); });
  resumeNext([&] { steps.ReadStoredSettings(); });
  resumeNext([&] { steps.LoadEraseSettings(); });
  resumeNext([&] { steps.LoadGeneralSettings(); });
  resumeNext([&] { steps.LoadBossKey(); });
  resumeNext([&] { steps.BringFirstPanelToFront(); });
  resumeNext([&] { steps.NameTheSystem(); });
  resumeNext([&] { steps.LoadScheduledList(); });
  resumeNext([&] { steps.ShowWindow(); });
  // Their hundred controls take as long as all the rest of the start; what was loaded into them until now shows itself.
  resumeNext([&] { steps.MakeOtherPanels(); });
  // Before the icon exists and the status text is set; both then show that the run is over.
  resumeNext([&] {
    if (steps.ErasesAtStart()) steps.EraseOnly();
  });
  resumeNext([&] { steps.AddIcon(); });
  resumeNext([&] { steps.ShowStartStatus(); });
}

}  // namespace app
