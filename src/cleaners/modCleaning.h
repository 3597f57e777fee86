// Cleaners of the Windows items: temporary files, ScanDisk files, the Find history and the registry streams. They show
// nothing; a failing statement is skipped, and ClearFind alone reports its failures.
#pragma once

namespace cleaners {

// What the temporary folder holds; the folder itself stays. Touches nothing when it is not one (temp_guard.h).
void ClearWindowsTemp();

// The ".chk" files that C:\ and D:\ list, found by their bare names only (wipe_file.h).
void ClearScanDiskFiles();

// The two histories of the Find window: their values, then the keys with their subkeys.
void ClearFind();

// The window-position streams of Explorer, and the page-file value under the current user.
void ClearRegistryStreams();

}  // namespace cleaners
