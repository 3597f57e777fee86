// What the companion decides from texts alone: whether it is asked to clear, and which entries it clears.
#pragma once

#include <string_view>

namespace iea {

// True when the only argument of the command line, which begins with the program's name, is 1. The name may be quoted;
// blanks before and after the argument do not count. Anything else ("", "11", "01", "1 2", "\"1\"") is no request: what
// is deleted cannot be had back.
bool AsksToClear(std::string_view commandLine);

// True for an entry of a form field ("email:StringData"), false for one whose name is a web address
// ("https://shop.example/login:StringData"): those are the saved passwords of a site, which are kept under the same type and
// belong to an erase item of their own.
bool IsFormEntry(std::wstring_view itemName);

}  // namespace iea
