// A tally in words, which are on the manual's page of it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/tally.h"

namespace platform {

// Put together in its place: a text that grew as a string does would cost the program a page of code.
class Words {
 public:
  Words& operator<<(const char* words);
  Words& operator<<(int number);

  const char* Text() const { return text_; }
  std::size_t Length() const { return length_; }
  void AppendTo(WideText& text) const;

 private:
  char text_[512] = "";  // more than the longest sentence
  std::size_t length_ = 0;
};

// "312 files, 18 MB erased; 3 stayed"
void PutSentence(Words& words, const LineTally& line);

// "in use by another program"
void PutReason(Words& words, Why why, std::uint32_t systemError);

// "18 MB": rounded down, with a decimal place below 10.
void PutBytes(Words& words, std::uint64_t bytes);

// What follows the names of those that have one; nothing where every one has.
void PutOthers(Words& words, const LineTally& line);

// The line with everything that it tells, to be copied: `caption` as the log has it, the sentence, and a line for each name
// with a tab, the name, a tab and the reason. Each ends in CR LF.
void AppendText(WideText& text, const char* caption, const Tally& tally, std::size_t line);

}  // namespace platform
