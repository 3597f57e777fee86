// The companion that clears the form entries which Internet Explorer's AutoComplete offers: those in the protected store
// (versions 4 to 6) and those in the registry (7 and later), of the current user. Quellix starts it hidden from its own
// folder and does not wait for it.
//
//   iea.exe 1
//
// Saved passwords and whatever other programs keep stay. It shows nothing, never a window or a message, and writes nothing.
//
// Exit status:
//   0  everything is cleared, also when there was nothing or the system has no such store
//   1  something could not be cleared; the rest is
//   2  started without the argument 1 or with anything else: nothing was done
#include "form_values.h"
#include "iea_rules.h"
#include "platform/hardening.h"
#include "platform/runtime_error.h"
#include "platform/win32.h"
#include "protected_store.h"

namespace iea {
using namespace platform;

namespace {

enum ExitStatus : int { kCleared = 0, kNotAllCleared = 1, kNotAsked = 2 };

// True when nothing is left of either store.
bool ClearBothStores() {
  bool storeCleared = false;
  bool valuesCleared = false;
  resumeNext([&] { storeCleared = ClearProtectedStore(); });
  resumeNext([&] { valuesCleared = ClearFormValues(); });
  return storeCleared && valuesCleared;
}

}  // namespace

}  // namespace iea

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  platform::HardenProcess();
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  if (!iea::AsksToClear(::GetCommandLineA())) return iea::kNotAsked;
  return iea::ClearBothStores() ? iea::kCleared : iea::kNotAllCleared;
}
