// What the Netscape/Mozilla cleaners decide from texts alone.
#pragma once

#include <string>
#include <string_view>

namespace cleaners {

// Whether a searched file is one of those that the list names: its name, case aside, occurs anywhere in the list's text. A
// file named "Value.tbl" is one because of "SchemaValue.tbl". That is meant.
bool IsInNameList(std::string_view fileName, std::string_view nameList);

// The profile folder that belongs to an install directory: every "Communicator" in it becomes "Users\" and the user's name.
// With one "\" behind it.
std::string ProfileFolderOf(const std::string& installDirectory, const std::string& userName);

// False for a text that leads out of the folder of the users when it stands in a path: one with a "\", "/" or ":" in it,
// and one of nothing but dots and blanks, since some systems take blanks away before they look at the dots.
bool IsUserName(std::string_view text);

}  // namespace cleaners
