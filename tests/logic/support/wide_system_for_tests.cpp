#include "wide_system_for_tests.h"

#include <clocale>
#include <cstdlib>
#include <cwctype>

namespace platform {

namespace {

constexpr unsigned kFirstLead = 0x81, kFirstTrail = 0x40, kTrails = 63, kLeads = 0x7C;
constexpr unsigned kFirstOfTwoBytes = 0x4E00;

bool IsIn(unsigned value, unsigned first, unsigned count) { return value >= first && value - first < count; }

unsigned Byte(char byte) { return static_cast<unsigned char>(byte); }

}  // namespace

bool UsesWideNames() { return !AnsiNamesOnlyForTests; }

WideText Widen(std::string_view ansi) {
  WideText wide;
  for (std::size_t at = 0; at < ansi.size(); ++at) {
    const unsigned byte = Byte(ansi[at]);
    const unsigned next = at + 1 < ansi.size() ? Byte(ansi[at + 1]) : 0;
    if (TestedCodePage == CodePage::kSingleByte || byte < 0x80) {
      wide += static_cast<WideChar>(byte);
    } else if (IsIn(byte, kFirstLead, kLeads) && IsIn(next, kFirstTrail, kTrails)) {
      wide += static_cast<WideChar>(kFirstOfTwoBytes + (byte - kFirstLead) * kTrails + next - kFirstTrail);
      ++at;
    } else {
      wide += u'\xFFFD';
    }
  }
  return wide;
}

std::optional<std::string> NarrowExactly(WideView text) {
  std::string narrow;
  for (const WideChar character : text) {
    if (character < (TestedCodePage == CodePage::kSingleByte ? 0x100u : 0x80u)) {
      narrow += static_cast<char>(character);
    } else if (TestedCodePage == CodePage::kDoubleByte && IsIn(character, kFirstOfTwoBytes, kLeads * kTrails)) {
      narrow += static_cast<char>(kFirstLead + (character - kFirstOfTwoBytes) / kTrails);
      narrow += static_cast<char>(kFirstTrail + (character - kFirstOfTwoBytes) % kTrails);
    } else {
      return {};
    }
  }
  return narrow;
}

std::string Narrow(WideView text) {
  std::string narrow;
  for (std::size_t at = 0; at < text.size(); ++at) narrow += NarrowExactly(text.substr(at, 1)).value_or("?");
  return narrow;
}

WideText UpperCase(WideView text) {
  static const locale_t letters = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (letters == nullptr) std::abort();  // every Linux of the supported kind has it
  WideText upper;
  for (const WideChar character : text) upper += static_cast<WideChar>(::towupper_l(character, letters));
  return upper;
}

}  // namespace platform
