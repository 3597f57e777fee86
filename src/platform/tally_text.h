// A tally in words, which are on the manual's page of it.
#pragma once

#include <cstddef>
#include <string>

#include "platform/tally.h"

namespace platform {

// "312 files, 18 MB erased; 3 stayed"
std::string Sentence(const LineTally& line);

// "in use by another program"
std::string Reason(const StayedTrace& stayed);

// "18 MB": rounded down, with a decimal place below 10.
std::string BytesText(std::uint64_t bytes);

// What follows the names of those that have one; empty where every one has.
std::string OthersText(const LineTally& line);

// The line with everything that it tells, to be copied: `caption` as the log has it, the sentence, a line a name with the
// name, a tab and the reason. Each ends in CR LF.
void AppendText(WideText& text, const std::string& caption, const LineTally& line);

}  // namespace platform
