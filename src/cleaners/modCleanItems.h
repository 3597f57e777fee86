// Cleaners of the Windows items that hand their work to the shell or the clipboard. A failing statement is skipped.
#pragma once

#include <string>

namespace cleaners {

// The recent-documents list of the Start menu.
void ClearRecentDocs();

// The recycle bin of one drive ("E", "E:" or "E:\"), or of every drive for an empty root.
void EmptyRecycleBin(const std::string& driveRoot, bool noConfirmation, bool noProgress, bool noSound);

void ClearClipboard();

}  // namespace cleaners
