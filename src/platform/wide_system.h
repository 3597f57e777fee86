// What the rules over wide texts ask of the system: whether it takes them, its code page, and its letters. This is all that
// they ask; the native tests answer it themselves.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/wide_text.h"

namespace platform {

// Set: as on Windows 9x also where the wide functions work. A Path that was made before is of no use afterwards.
inline bool AnsiNamesOnlyForTests = false;

// True on the NT family. Windows 9x exports the wide functions as stubs that fail.
bool UsesWideNames();

// The text of the ANSI code page in wide characters.
WideText Widen(std::string_view ansi);

// The ANSI text that Widen makes this one of; nothing where the code page lacks a character, also where it has one that
// looks alike. On double-byte code pages a byte 0x5C may be the second half of a letter: split a text before it gets here.
std::optional<std::string> NarrowExactly(WideView text);

// The same with "?" for what the code page lacks: to be shown, not to lead anywhere.
std::string Narrow(WideView text);

// The same with a character that looks alike in place of one that the code page lacks: not every system can be told to do
// otherwise.
std::string NarrowLike(WideView text);

// Every letter in its capital form, as the system's own comparisons of names have it.
WideText UpperCase(WideView text);

}  // namespace platform
