// The browser's index files, which tell where one was after the history is gone.
#pragma once

namespace cleaners {

// Fills each of the three index files with blanks over its whole length; nothing is deleted, and none changes its length.
// A file that is locked, read-only, sparse, missing or has a second name is passed over, and all of them after a stop
// request, which also ends the one that is being filled.
void ClearLockedIndexFiles();

}  // namespace cleaners
