// A tally in words, which are on the manual's page of it. A text stays what it is until the next one is asked for: one that
// is put together in its place costs the program a fraction of one that grows.
#pragma once

#include <cstdint>

#include "platform/tally.h"

namespace platform {

// "312 files, 18 MB erased; 3 stayed"
const char* Sentence(const LineTally& tally);

// "in use by another program"
const char* Reason(Why why, std::uint32_t systemError);

// "18 MB": rounded down, with a decimal place below 10.
const char* BytesText(std::uint64_t bytes);

// The line with everything that it tells, to be copied: `caption` as the log has it, the sentence, and a line for each name
// with a tab, the name, a tab and the reason. Each ends in CR LF.
void AppendText(WideText& text, const char* caption, const Tally& tally, std::size_t line);

}  // namespace platform
