// The cookies to keep: how their file is read and written, and which of the current cookies are on the list. The file is in
// the ANSI code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/wide_text.h"

namespace cookies {
using namespace platform;

using CookieNames = std::vector<WideText>;

// The fields of the file's text. A comma or a line end (CR LF, CR or LF) ends a field; double quotes around a field, with
// blanks before or after them, are dropped, and a comma between them belongs to the field. A quote that is not closed
// before its line ends is a character like any other. NUL bytes, which no list can hold, are left out.
CookieNames ReadKeepList(std::string_view text);

// One name a line, each line ended by CR LF, and nothing quoted: a name with a comma in it comes back as two.
std::string KeepListText(const CookieNames& names);

// Equal but for the case of their letters and for blanks around either.
bool IsSameCookie(WideView one, WideView other);

// Moves the current cookies that are on the keep list to the front, in the keep list's order; each line of the list takes
// one. The others keep theirs. Gives how many there are. Thousands of names can be kept whose cookies are gone, and to look
// through a list for each of them would take minutes.
std::size_t PutKeptFirst(CookieNames& current, const CookieNames& kept);

}  // namespace cookies
