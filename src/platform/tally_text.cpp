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

void Append(std::string& list, const std::string& part) {
  if (!list.empty()) list += ", ";
  list += part;
}

std::string ErasedText(const LineTally& line) {
  std::string text;
  for (std::size_t kind = 0; kind < kTraceKinds; ++kind) {
    const std::uint64_t count = line.erased[kind];
    if (count > 0) Append(text, std::to_string(count) + " " + (count == 1 ? kNouns[kind].one : kNouns[kind].several));
  }
  if (line.bytes > 0) Append(text, BytesText(line.bytes));
  return text;
}

WideText WideOf(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

}  // namespace

std::string Sentence(const LineTally& line) {
  if (line.isForgotten) return "Not kept: Quellix was invisible";
  const std::string erased = ErasedText(line);
  std::string text = erased.empty() ? line.isCounted ? "Nothing erased" : "" : erased + " erased";
  if (!line.isCounted) text += (text.empty() ? "" : "; ") + std::string("iea.exe erases and does not tell what");
  if (line.stayed > 0) text += "; " + std::to_string(line.stayed) + " stayed";
  if (line.isStopped) text += "; stopped before the end";
  return text;
}

std::string Reason(const StayedTrace& stayed) {
  if (stayed.why == Why::Gone) return {};
  const std::string text = kReasons[static_cast<std::size_t>(stayed.why)];
  return stayed.why == Why::Other ? text + std::to_string(stayed.error) : text;
}

std::string BytesText(std::uint64_t bytes) {
  constexpr const char* kUnits[] = {"bytes", "KB", "MB", "GB", "TB"};
  if (bytes == 1) return "1 byte";
  std::size_t unit = 0;
  std::uint64_t tenths = bytes * 10;
  for (; tenths >= 10240 && unit + 1 < std::size(kUnits); ++unit) tenths /= 1024;
  std::string text = std::to_string(tenths / 10);
  if (unit > 0 && tenths < 100 && tenths % 10 != 0) text += "." + std::to_string(tenths % 10);
  return text + " " + kUnits[unit];
}

std::string OthersText(const LineTally& line) {
  const std::uint64_t others = line.stayed - line.names.size();
  if (others == 0) return {};
  return "and " + std::to_string(others) + (line.names.empty() ? " without a name" : " more without a name");
}

WideText LineText(WideView caption, const LineTally& line) {
  WideText text(caption);
  const auto end = [&text] { text.append(Wide<"\r\n">()); };
  if (!text.empty()) end();
  text += WideOf(Sentence(line));
  end();
  for (const StayedTrace& one : line.names) {
    text.append(Wide<"    ">()).append(one.name).append(Wide<"\t">()).append(WideOf(Reason(one)));
    end();
  }
  if (const std::string others = OthersText(line); !others.empty()) {
    text.append(Wide<"    ">()).append(WideOf(others));
    end();
  }
  return text;
}

}  // namespace platform
