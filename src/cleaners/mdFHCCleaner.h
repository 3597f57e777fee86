// Cleaners of the Internet Explorer items and of the Run history: the current user's data, nothing is shown.
#pragma once

#include <cstdint>

namespace cleaners {

// How many registry keys the three registry cleaners below have gone about since the program started. Nothing reads it.
inline std::int32_t ClearedKeyCount = 0;

// The location bar's history: the key of the typed addresses.
void Command7();

// The AutoComplete forms data: starts the companion "iea.exe" of the program's folder and does not wait for it.
void cmdAutoComplte();

void ClearAutoCompletePasswords();

// The browser's history store.
void ClearIEHistory();

// The history of the Run dialog.
void ClearRunMRU();

}  // namespace cleaners
