// The value under the machine's Run key that starts the program with Windows.
#pragma once

#include <string>

namespace automation {

// The product's name, a blank, a hyphen, a blank and the version: stable between saves, so that the deletion finds it.
std::string RunValueName();

// "<folder>\<base name>.exe m" for the program's file. The program reads no command line; the "m" belongs to the value.
// Windows cuts such a value at a blank: where folder or name holds one, that part is taken from `shortFile`, the same path
// in its short form, if there is one.
std::string RunValueData(const std::string& file, const std::string& shortFile);

}  // namespace automation
