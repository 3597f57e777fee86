#include "shred/list_file.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "platform/wide_system.h"

namespace shred {
using namespace platform;

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::uint32_t kNoCharacter = 0xFFFD;  // what takes the place of bytes that are none

bool IsHalf(std::uint32_t unit, std::uint32_t first) { return unit >= first && unit < first + 0x400; }

// A pair of surrogates is one character; half a pair stays one by itself.
std::uint32_t TakeCharacter(WideView& text) {
  std::uint32_t character = text[0];
  std::size_t units = 1;
  if (IsHalf(character, 0xD800) && text.size() > 1 && IsHalf(text[1], 0xDC00)) {
    character = 0x10000 + ((character - 0xD800) << 10) + (text[1] - 0xDC00u);
    units = 2;
  }
  text.remove_prefix(units);
  return character;
}

void AppendUtf8(std::string& bytes, std::uint32_t character) {
  const int more = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;  // bytes after the first
  constexpr std::uint32_t kFirst[] = {0, 0xC0, 0xE0, 0xF0};
  bytes += static_cast<char>(kFirst[more] | (character >> (6 * more)));
  for (int left = more; left-- > 0;) bytes += static_cast<char>(0x80 | ((character >> (6 * left)) & 0x3F));
}

// Takes a byte that begins no character off as well.
std::uint32_t TakeUtf8(std::string_view& bytes) {
  const auto first = static_cast<unsigned char>(bytes[0]);
  const std::size_t more = first < 0x80 ? 0 : first < 0xC0 ? 4 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : first < 0xF8 ? 3 : 4;
  std::uint32_t character = more == 0 ? first : first & (0x3Fu >> more);
  std::size_t used = 1;
  while (more < 4 && used <= more && used < bytes.size() && (bytes[used] & 0xC0) == 0x80)
    character = (character << 6) | (bytes[used++] & 0x3Fu);
  constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  const bool whole = more < 4 && used == more + 1 && character >= kSmallest[more] && character < 0x110000;
  bytes.remove_prefix(whole ? used : 1);
  return whole ? character : kNoCharacter;
}

WideText FromUtf8(std::string_view bytes) {
  WideText text;
  while (!bytes.empty()) {
    const std::uint32_t character = TakeUtf8(bytes);
    if (character >= 0x10000) {
      text += static_cast<WideChar>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<WideChar>(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      text += static_cast<WideChar>(character);
    }
  }
  return text;
}

std::string Utf8(WideView text) {
  std::string bytes;
  while (!text.empty()) AppendUtf8(bytes, TakeCharacter(text));
  return bytes;
}

std::optional<std::string> AnsiText(const std::vector<WideText>& lines) {
  std::string text;
  for (const WideText& line : lines) {
    const std::optional<std::string> ansi = NarrowExactly(line);
    if (!ansi) return {};
    text += *ansi + "\r\n";
  }
  if (text.starts_with(kUtf8Mark)) return {};
  return text;
}

}  // namespace

std::vector<WideText> ReadListFile(std::string_view text) {
  const bool utf8 = text.starts_with(kUtf8Mark);
  if (utf8) text.remove_prefix(kUtf8Mark.size());
  std::vector<WideText> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    if (end < text.size() && line.ends_with('\r')) line.pop_back();
    std::erase(line, '\0');
    lines.push_back(utf8 ? FromUtf8(line) : Widen(line));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string ListFileText(const std::vector<WideText>& lines) {
  if (const std::optional<std::string> ansi = AnsiText(lines)) return *ansi;
  std::string text(kUtf8Mark);
  for (const WideText& line : lines) text += Utf8(line) + "\r\n";
  return text;
}

}  // namespace shred
