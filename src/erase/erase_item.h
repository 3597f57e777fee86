// One erasable item: everything that the program knows of it is in one row.
#pragma once

namespace erase {

// The four check-box arrays of the main settings panel, in the order in which boxes are counted and selected.
enum class BoxArray { chkIEsettings, chkWinsettings, chkNetsettings, chkOsettings };
inline constexpr int kBoxArrayCount = 4;

// A procedure that erases one kind of trace; null for none.
using Cleaner = void (*)();

enum class Runs { Yes, Never };

struct EraseItem {
  BoxArray array;
  int index;                      // of the box in its array, from 0
  const char* key;                // of its flag in the settings
  const char* caption;            // of its box
  const char* logLine = nullptr;  // null: the item writes none
  Cleaner cleaner = nullptr;
  Cleaner secondCleaner = nullptr;      // a statement of its own after the first
  const char* secondLogLine = nullptr;  // written after the work
  Runs runs = Runs::Yes;                // Never: shown, saved and counted as selected, but never run
};

}  // namespace erase
