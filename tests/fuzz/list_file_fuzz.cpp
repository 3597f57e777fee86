// The scheduled list's file: whatever it holds, it reads as lines that a list can show, which are the same again once they
// are saved. Whatever names a list has, they come back from its file, in every code page.
#include <algorithm>
#include <string>

#include "property.h"
#include "shred/list_file.h"
#include "wide_input.h"
#include "wide_system_for_tests.h"

using namespace platform;
using namespace shred;

namespace {

using Lines = std::vector<WideText>;

constexpr char kMark[] = "\xEF\xBB\xBF";

void CheckText(const std::string& text) {
  const Lines lines = ReadListFile(text);
  for (const WideText& line : lines)
    PROPERTY(line.find(u'\n') == WideText::npos && line.find(u'\0') == WideText::npos, "[%s]", Readable(line).c_str());
  const std::string plain = text.starts_with(kMark) ? text.substr(3) : text;
  const auto ends = static_cast<std::size_t>(std::count(plain.begin(), plain.end(), '\n'));
  const std::size_t last = plain.empty() || plain.back() == '\n' ? 0 : 1;
  PROPERTY(lines.size() == ends + last, "%zu lines", lines.size());

  PROPERTY(ReadListFile(ListFileText(lines)) == lines, "[%s]", text.c_str());

  std::size_t crLf = 0;
  for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 2)) ++crLf;
  const bool oneByteEach = TestedCodePage == CodePage::kSingleByte && !text.starts_with(kMark);
  if (oneByteEach && crLf == ends && last == 0 && text.find('\0') == std::string::npos)
    PROPERTY(ListFileText(lines) == text, "[%s]", text.c_str());
}

void CheckNames(const WideText& names) {
  Lines lines(1);
  for (const WideChar unit : names) {
    if (unit == u'|')
      lines.emplace_back();
    else if (unit != u'\n' && unit != u'\0')
      lines.back() += unit;
  }
  const std::string text = ListFileText(lines);
  PROPERTY(ReadListFile(text) == lines, "[%s]", Readable(names).c_str());
  const bool fits =
      std::all_of(lines.begin(), lines.end(), [](const WideText& line) { return NarrowExactly(line).has_value(); });
  PROPERTY(fits || text.starts_with(kMark), "[%s]", Readable(names).c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  for (const CodePage page : {CodePage::kSingleByte, CodePage::kDoubleByte}) {
    const OtherSystem system(page);
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckText(text);
    CheckText(kMark + text);
    CheckNames(WideInput(data, size));
  }
  return 0;
}
