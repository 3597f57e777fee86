// What the Netscape/Mozilla cleaners decide from texts alone.
#pragma once

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

// Whether a searched file is one of those that the list names: its name, ignoring case, occurs anywhere in the list's text.
// A file named "Value.tbl" is one because of "SchemaValue.tbl": a longer name of the list holds it.
bool IsInNameList(WideView fileName, WideView nameList);

// The profile folder that belongs to an install directory: every "Communicator" in it becomes "Users\" and the user's name.
// With one "\" after it.
WideText ProfileFolderOf(WideView installDirectory, WideView userName);

// False for a text that leads out of the folder of the users when it is part of a path: one with a "\", "/" or ":" in it,
// and one of nothing but dots and blanks, since some systems take blanks away before they look at the dots.
bool IsUserName(WideView text);

}  // namespace cleaners
