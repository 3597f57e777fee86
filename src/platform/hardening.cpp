#include "platform/hardening.h"

#include "platform/system_functions.h"

namespace platform {

void HardenProcess() {
  constexpr DWORD kSystemFolderOnly = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  constexpr DWORD kEnable = 1;                // PROCESS_DEP_ENABLE
  constexpr int kTerminationOnCorruption = 1;
  if (late::SetDllDirectory) late::SetDllDirectory("");  // the current folder is out of the search
  if (late::SetDefaultDllDirectories) late::SetDefaultDllDirectories(kSystemFolderOnly);
  if (late::SetProcessDEPPolicy) late::SetProcessDEPPolicy(kEnable);
  if (late::HeapSetInformation) late::HeapSetInformation(nullptr, kTerminationOnCorruption, nullptr, 0);
}

}  // namespace platform
