// The cookies to keep: how their file is read and written, and which of the current cookies are on the list. Names are
// single-byte texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cookies {

using CookieNames = std::vector<std::string>;

// The fields of the file's text. A comma or a line end (CR LF, CR or LF) ends a field; double quotes around a field, with
// blanks before or behind them, are dropped, and a comma between them belongs to the field. A quote that is not closed
// before its line ends is a character like any other. NUL bytes, which no list can hold, are left out.
CookieNames ReadKeepList(std::string_view text);

// One name a line, each line ended by CR LF, as it stands: a name with a comma in it comes back as two. That is meant.
std::string KeepListText(const CookieNames& names);

// Equal but for case and for blanks around either.
bool IsSameCookie(std::string_view one, std::string_view other);

// The current cookies without those on the keep list: each kept line takes the first line away that it is the same cookie
// as. The order stays.
CookieNames WithoutKept(const CookieNames& current, const CookieNames& kept);

}  // namespace cookies
