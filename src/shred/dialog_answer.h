// What the system's file-open dialog leaves in its buffer, in ANSI or in wide characters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace shred {

// The full paths that the answer stands for: one path, or a folder and the names chosen in it, separated by NUL characters
// and ended by two (the explorer-style layout of a multiple selection). Nothing for an empty answer. What stands behind the
// end of the answer is not looked at.
std::vector<std::string> SplitDialogAnswer(std::string_view answer);
std::vector<std::wstring> SplitDialogAnswer(std::wstring_view answer);

// Whether an answer ends within its buffer, which is zeroed before the dialog comes. One that does not was cut off, and its
// last name may be another file's.
bool IsWholeAnswer(std::string_view buffer);
bool IsWholeAnswer(std::wstring_view buffer);

}  // namespace shred
