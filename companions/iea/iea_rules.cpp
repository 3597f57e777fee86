#include "iea_rules.h"

#include <cstddef>
#include <string>

#include "platform/plain_text.h"

namespace iea {
using namespace platform;

namespace {

// What follows the program's name; a blank inside quotes belongs to the name.
std::string_view ArgumentsOf(std::string_view commandLine) {
  bool quoted = false;
  for (std::size_t at = 0; at < commandLine.size(); ++at) {
    if (commandLine[at] == '"') quoted = !quoted;
    if (commandLine[at] == ' ' && !quoted) return commandLine.substr(at);
  }
  return {};
}

}  // namespace

bool AsksToClear(std::string_view commandLine) { return Trim(ArgumentsOf(commandLine)) == "1"; }

bool IsFormEntry(std::wstring_view itemName) { return itemName.find(L"://") == std::wstring_view::npos; }

}  // namespace iea
