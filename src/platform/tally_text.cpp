#include "platform/tally_text.h"

#include <cstddef>
#include <iterator>
#include <string>

namespace platform {

namespace {

struct Noun {
  const char* one;
  const char* several;
};

// In the order of Trace, which is that of the sentence.
constexpr Noun kNouns[] = {
    {" file", " files"},
    {" folder", " folders"},
    {" index file", " index files"},
    {" cache entry", " cache entries"},
    {" cookie", " cookies"},
    {" history entry", " history entries"},
    {" registry key", " registry keys"},
    {" registry value", " registry values"},
    {" item of the recycle bin", " items of the recycle bin"},
    {" clipboard format", " clipboard formats"},
};
static_assert(std::size(kNouns) == kTraceKinds);

// In the order of Why.
constexpr const char* kReasons[] = {
    "in use by another program",
    "may not be changed",
    "a link, left alone",
    "still holds something",
    "hidden, read-only or of the system, left alone",
    "has a second name or gaps, left alone",
    "deleted, but not overwritten as a whole",
    "out of reach",
    "out of reach from the folder in which Quellix was started",
    "left by Windows",
    "this system lacks the function",
    "refused: there is no such folder",
    "refused: it is not the folder that TMP or TEMP names",
    "refused: this is a whole drive or share",
    "refused: this is a link",
    "refused: this folder holds the Windows folder",
    "refused: this folder holds folders of programs or of the user",
    "refused: this folder lies where all users share it",
    "refused by Windows, error ",
};
static_assert(std::size(kReasons) == static_cast<std::size_t>(Why::Gone));

char theText[512];  // longer than the longest sentence
std::size_t theLength = 0;

void Put(const char* words) {
  while (*words != '\0' && theLength + 1 < sizeof theText) theText[theLength++] = *words++;
  theText[theLength] = '\0';
}

void Put(int number) { Put(std::to_string(number).c_str()); }

void PutBytes(std::uint64_t bytes) {
  constexpr const char* kUnits[] = {" bytes", " KB", " MB", " GB", " TB"};
  std::size_t unit = 0;
  int rest = 0;
  for (; bytes >= 1024 && unit + 1 < std::size(kUnits); ++unit) {
    rest = static_cast<int>(bytes & 1023);
    bytes >>= 10;
  }
  Put(static_cast<int>(bytes));
  if (const int tenths = rest * 10 / 1024; bytes < 10 && tenths > 0) {
    Put(".");
    Put(tenths);
  }
  Put(bytes == 1 && unit == 0 ? " byte" : kUnits[unit]);
}

void PutSentence(const LineTally& line) {
  const char* comma = "";
  for (std::size_t kind = 0; kind < kTraceKinds; ++kind) {
    const int count = line.erased[kind];
    if (count == 0) continue;
    Put(comma);
    Put(count);
    Put(count == 1 ? kNouns[kind].one : kNouns[kind].several);
    comma = ", ";
  }
  if (line.bytes > 0) {
    Put(comma);
    PutBytes(line.bytes);
  }
  const bool isErased = theLength > 0;
  if (isErased || !line.isNotCounted) Put(isErased ? " erased" : "Nothing erased");
  if (isErased && line.isNotCounted) Put("; ");
  if (line.isNotCounted) Put("iea.exe erases and does not tell what");
  if (line.stayed > 0) {
    Put("; ");
    Put(line.stayed);
    Put(" stayed");
  }
  if (line.stayed > line.named) {
    Put(", ");
    Put(line.named);
    Put(" of them by name");
  }
  if (line.isStopped) Put("; stopped before the end");
}

void Append(WideText& text, const char* words) {
  while (*words != '\0') text += static_cast<WideChar>(*words++);
}

}  // namespace

const char* Sentence(const LineTally& line) {
  if (line.isForgotten) return "Not kept: Quellix was invisible";
  theLength = 0;
  PutSentence(line);
  return theText;
}

const char* Reason(Why why, std::uint32_t systemError) {
  const char* const reason = kReasons[static_cast<std::size_t>(why)];
  if (why != Why::Other) return reason;
  theLength = 0;
  Put(reason);
  Put(static_cast<int>(systemError));
  return theText;
}

const char* BytesText(std::uint64_t bytes) {
  theLength = 0;
  PutBytes(bytes);
  return theText;
}

void AppendText(WideText& text, const char* caption, const Tally& tally, std::size_t line) {
  const Tally::Lines alone = {line, line + 1};
  Append(text, caption);
  Append(text, "\r\n");
  Append(text, Sentence(tally.Sum(alone)));
  Append(text, "\r\n");
  for (WideView texts = tally.Texts(alone); !texts.empty(); Append(text, "\r\n"))
    for (int part = 0; part < 2; ++part) (text += '\t') += TakeText(texts);
}

}  // namespace platform
