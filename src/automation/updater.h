// The button "Check for Update".
#pragma once

namespace automation {

// Starts "Update.exe" of the program's folder, minimised, and goes on; tells when it is missing or cannot be started.
void StartUpdater();

}  // namespace automation
