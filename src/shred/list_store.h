// The file "QUELLIX_Shred" in the program's folder, which keeps the scheduled list from one start to the next.
#pragma once

#include <optional>
#include <vector>

#include "platform/wide_text.h"

namespace shred {
using namespace platform;

// Its lines; nothing when there is no such file, and after a message for one over 16 MB. Raises the system's
// error when it cannot be read.
std::optional<std::vector<WideText>> StoredList();

// A read-only file of that name is written all the same. Raises when the writing fails; the old list then stays whole.
void StoreList(const std::vector<WideText>& lines);

// Nothing when there is none. Overwritten first: it names what was shredded. Raises when it cannot be deleted.
void DeleteStoredList();

}  // namespace shred
