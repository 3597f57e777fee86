// The scheduled list's file: whatever it holds, it reads as lines that a list can show, which are the same again once they
// are saved.
#include <algorithm>
#include <string>

#include "property.h"
#include "shred/list_file.h"

using namespace shred;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::vector<std::string> lines = ReadListFile(text);

  std::size_t total = 0;
  for (const std::string& line : lines) {
    PROPERTY(line.find('\n') == std::string::npos && line.find('\0') == std::string::npos, "[%s]", line.c_str());
    total += line.size();
  }
  PROPERTY(total <= size, "%zu bytes of lines from %zu", total, size);
  const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  const std::size_t last = text.empty() || text.back() == '\n' ? 0 : 1;
  PROPERTY(lines.size() == ends + last, "%zu lines", lines.size());

  PROPERTY(ReadListFile(ListFileText(lines)) == lines, "[%s]", text.c_str());

  std::size_t crLf = 0;
  for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 2)) ++crLf;
  const bool asTheProgramWritesIt = crLf == ends && last == 0 && text.find('\0') == std::string::npos;
  if (asTheProgramWritesIt) PROPERTY(ListFileText(lines) == text, "[%s]", text.c_str());
  return 0;
}
