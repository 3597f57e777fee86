#include "platform/tally_text.h"

#include <iterator>

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

// Put together in its place: a text that grew as a string does would cost the program a page of code.
class Words {
 public:
  Words& operator<<(const char* words) {
    while (*words != '\0' && length_ < sizeof text_) text_[length_++] = *words++;
    return *this;
  }
  Words& operator<<(int number) { return *this << std::to_string(number).c_str(); }
  bool IsEmpty() const { return length_ == 0; }
  std::string Text() const { return {text_, length_}; }

 private:
  char text_[512];
  std::size_t length_ = 0;
};

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

void PutErased(Words& words, const LineTally& line) {
  const char* comma = "";
  for (std::size_t kind = 0; kind < kTraceKinds; ++kind) {
    const int count = line.erased[kind];
    if (count == 0) continue;
    words << comma << count << " " << (count == 1 ? kNouns[kind].one : kNouns[kind].several);
    comma = ", ";
  }
  if (line.bytes > 0) PutBytes(words << comma, line.bytes);
}

void PutReason(Words& words, const StayedTrace& stayed) {
  words << kReasons[static_cast<std::size_t>(stayed.why)];
  if (stayed.why == Why::Other) words << stayed.error;
}

void PutOthers(Words& words, const LineTally& line) {
  const int others = line.stayed - line.named;
  if (others > 0) words << "and " << others << " without a name";
}

void PutSentence(Words& words, const LineTally& line) {
  if (line.isForgotten) {
    words << "Not kept: Quellix was invisible";
    return;
  }
  PutErased(words, line);
  if (!words.IsEmpty())
    words << " erased";
  else if (line.isCounted)
    words << "Nothing erased";
  if (!line.isCounted) words << (words.IsEmpty() ? "" : "; ") << "iea.exe erases and does not tell what";
  if (line.stayed > 0) words << "; " << line.stayed << " stayed";
  if (line.isStopped) words << "; stopped before the end";
}

void Append(WideText& text, const Words& words) {
  for (const char letter : words.Text()) text += static_cast<WideChar>(letter);
}

}  // namespace

std::string Sentence(const LineTally& line) {
  Words words;
  PutSentence(words, line);
  return words.Text();
}

std::string Reason(const StayedTrace& stayed) {
  Words words;
  PutReason(words, stayed);
  return words.Text();
}

std::string BytesText(std::uint64_t bytes) {
  Words words;
  PutBytes(words, bytes);
  return words.Text();
}

std::string OthersText(const LineTally& line) {
  Words words;
  PutOthers(words, line);
  return words.Text();
}

void AppendText(WideText& text, const std::string& caption, const LineTally& line) {
  Words head, sentence;
  Append(text, head << caption.c_str() << "\r\n");
  PutSentence(sentence, line);
  Append(text, sentence << "\r\n");
  StayedTrace one{};
  for (std::size_t at = 0; line.Next(at, one);) {
    Words why;
    PutReason(why << "\t", one);
    text += static_cast<WideChar>('\t');
    text += one.name;
    Append(text, why << "\r\n");
  }
  if (line.stayed == line.named) return;
  Words others;
  PutOthers(others << "\t", line);
  Append(text, others << "\r\n");
}

}  // namespace platform
