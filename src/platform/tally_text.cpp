#include "platform/tally_text.h"

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
    {"file", "files"},
    {"folder", "folders"},
    {"index file", "index files"},
    {"cache entry", "cache entries"},
    {"cookie", "cookies"},
    {"history entry", "history entries"},
    {"registry key", "registry keys"},
    {"registry value", "registry values"},
    {"item of the recycle bin", "items of the recycle bin"},
    {"clipboard format", "clipboard formats"},
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

}  // namespace

Words& Words::operator<<(const char* words) {
  while (*words != '\0' && length_ + 1 < sizeof text_) text_[length_++] = *words++;
  text_[length_] = '\0';
  return *this;
}

Words& Words::operator<<(int number) { return *this << std::to_string(number).c_str(); }

void Words::AppendTo(WideText& text) const {
  for (const char* letter = text_; *letter != '\0'; ++letter) text += static_cast<WideChar>(*letter);
}

void PutBytes(Words& words, std::uint64_t bytes) {
  constexpr const char* kUnits[] = {" bytes", " KB", " MB", " GB", " TB"};
  std::size_t unit = 0;
  int rest = 0;
  for (; bytes >= 1024 && unit + 1 < std::size(kUnits); ++unit) {
    rest = static_cast<int>(bytes & 1023);
    bytes >>= 10;
  }
  words << static_cast<int>(bytes);
  if (const int tenths = rest * 10 / 1024; bytes < 10 && tenths > 0) words << "." << tenths;
  words << (bytes == 1 && unit == 0 ? " byte" : kUnits[unit]);
}

void PutReason(Words& words, Why why, std::uint32_t systemError) {
  words << kReasons[static_cast<std::size_t>(why)];
  if (why == Why::Other) words << static_cast<int>(systemError);
}

void PutOthers(Words& words, const LineTally& line) {
  if (line.stayed > line.named) words << "and " << line.stayed - line.named << " without a name";
}

void PutSentence(Words& words, const LineTally& line) {
  if (line.isForgotten) {
    words << "Not kept: Quellix was invisible";
    return;
  }
  const char* comma = "";
  for (std::size_t kind = 0; kind < kTraceKinds; ++kind) {
    const int count = line.erased[kind];
    if (count == 0) continue;
    words << comma << count << " " << (count == 1 ? kNouns[kind].one : kNouns[kind].several);
    comma = ", ";
  }
  if (line.bytes > 0) PutBytes(words << comma, line.bytes);
  if (words.Length() > 0)
    words << " erased";
  else if (!line.isNotCounted)
    words << "Nothing erased";
  if (line.isNotCounted) words << (words.Length() == 0 ? "" : "; ") << "iea.exe erases and does not tell what";
  if (line.stayed > 0) words << "; " << line.stayed << " stayed";
  if (line.isStopped) words << "; stopped before the end";
}

void AppendText(WideText& text, const char* caption, const Tally& tally, std::size_t line) {
  const LineTally sum = tally.Sum(line, line + 1);
  (Words() << caption << "\r\n").AppendTo(text);
  Words sentence;
  PutSentence(sentence, sum);
  (sentence << "\r\n").AppendTo(text);
  for (WideView texts = tally.Texts(line, line + 1); !texts.empty();) {
    text.append(1, '\t').append(TakeText(texts));
    text.append(1, '\t').append(TakeText(texts)).append(Wide<"\r\n">());
  }
  Words others;
  PutOthers(others, sum);
  if (others.Length() > 0) (Words() << "\t" << others.Text() << "\r\n").AppendTo(text);
}

}  // namespace platform
