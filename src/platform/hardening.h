// What a program of ours asks of the system before anything else.
#pragma once

namespace platform {

// Libraries are looked for in the system folder alone, also those that the system's own libraries load by their bare names;
// data is not executed; a damaged heap ends the process. Each as far as the system knows it: the first statement of a
// program.
void HardenProcess();

}  // namespace platform
