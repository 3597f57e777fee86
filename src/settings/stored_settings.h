// Moving values between the store and the settings variables. The controls' share of loading and saving is the panels'.
#pragma once

#include <span>
#include <string>

namespace settings {

// An item flag: its key and the variable that holds it.
struct ItemFlag {
  const char* key;
  std::string* text;
};

// Reads the items' flags in their order, then every value of the schema that has a variable, each trimmed of blanks; sets
// the scheduler's tick counter to 0. A value that fails leaves its variable as it was, and reading goes on.
void ReadStoredSettings(std::span<const ItemFlag> items);

// Writes the items' flags in their order, then everything that is saved in the schema's order. Raises the first error; what
// comes after it is then not written.
void WriteStoredSettings(std::span<const ItemFlag> items);

}  // namespace settings
