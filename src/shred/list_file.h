// The text of the file that keeps the scheduled list: a path a line, nothing else.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/wide_text.h"

namespace shred {
using namespace platform;

// The lines as they are, whatever is in them; CR LF or LF ends one, and the last one may lack it. NUL bytes, which
// no list can hold, are left out. A text that begins with the mark of UTF-8 is read as such, any other in the ANSI code
// page.
std::vector<WideText> ReadListFile(std::string_view text);

// Each line followed by CR LF: in the ANSI code page where it has every character, otherwise in UTF-8 with its mark. Half a
// surrogate pair, which names may hold too, is written like a character of its own.
std::string ListFileText(const std::vector<WideText>& lines);

}  // namespace shred
