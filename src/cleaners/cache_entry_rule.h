// Which entries of the URL cache a walk removes, told from the entry's URL, and what a cookie is called.
#pragma once

#include <string_view>

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

// Every entry but the history's "Visited:" ones. The entry's first 8 characters are compared, case aside, with "VISITED:"
// and with the 7 of "COOKIE:", which those of a cookie's URL never equal: cookies go as well, and the item
// "Erase Cookies" relies on it.
bool IsDeletedByCacheWalk(std::string_view url);

// A URL that begins with "Cookie:" in this very case.
bool IsCookieUrl(std::string_view url);

// What follows the last "\" of the cookie's file; empty for a cookie without a file.
WideText CookieName(WideView localFileName);

}  // namespace cleaners
