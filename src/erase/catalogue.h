// The catalogue of erasable items and their flags. Texts are exact, misspellings, doubled blanks and dots included.
#pragma once

#include <span>
#include <string>

#include "erase/erase_item.h"
#include "settings/stored_settings.h"

namespace erase {

// In the order in which a run takes them; those that never run come last.
std::span<const EraseItem> Catalogue();

// Boxes are visited, selected, read and saved array by array, each from index 0 on.
std::span<const EraseItem* const> ItemsInBoxOrder();

// The item's flag: its box's value as text, "1" for a ticked one. Kept by the box, read by the run.
std::string& ItemFlag(const EraseItem& item);

// The flags with their keys in the order of the boxes, in which they are read and saved.
std::span<const settings::ItemFlag> StoredItemFlags();

}  // namespace erase
