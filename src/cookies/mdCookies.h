// The keep list between its list box and its file. A failing statement is skipped.
#pragma once

#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/path.h"

namespace cookies {
using namespace platform;

// True when some line of the list is the same cookie as `name`, ignoring case and blanks around either. Window events run
// after a line that is not.
bool IsKept(const ListBox& list, const WideText& name);

// The first such line; -1 for none. No event runs.
int LineOf(const ListBox& list, const WideText& name);

// Creates or overwrites the file with the list's lines, first to last. When that fails, the old file stays whole.
void SaveList(const ListBox& list, const Path& path);

// Empties the list and fills it from the file, if there is one, while window events run. False when there is a file that
// cannot be read; the list is then empty. `cutShort`, when given, is looked at after each line: the loading ends there.
bool LoadList(ListBox& list, const Path& path, const bool* cutShort = nullptr);

}  // namespace cookies
