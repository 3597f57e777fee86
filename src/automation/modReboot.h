// Restarting Windows, and starting with it. A failing statement is passed over.
#pragma once

namespace automation {

bool IsWinNT();

// "SeShutdownPrivilege" for this process: the NT family reboots for no one else.
void EnableShutdownPrivilege();

// Reboots; with `force`, programs that do not answer are ended. Nothing is said when the system refuses.
void RebootSystem(bool force);

// Writes or deletes the Run value, as the setting "LoadStartup" has it. The helpers of Reg32.h report what fails.
void RegisterStartup();

}  // namespace automation
