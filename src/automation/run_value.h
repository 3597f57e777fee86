// The value under the machine's Run key that starts the program with Windows.
#pragma once

#include <string>

#include "platform/path.h"

namespace automation {
using namespace platform;

// The product's name, a blank, a hyphen, a blank and the version: stable between saves, so that the deletion finds it.
std::string RunValueName();

// "<folder>\<base name>.exe m" for the program's file, in the ANSI code page. The program reads no command line; the "m"
// belongs to the value. Windows cuts such a value at a blank: where folder or name holds one, or anything else by which the
// value would start another program, that part is taken from `shortFile`, the same path in its short form. Where there is no
// short form, quotes around the path keep its blanks. Empty when no form of the path leads to the program, also by its
// length.
std::string RunValueData(const Path& file, const Path& shortFile);

}  // namespace automation
