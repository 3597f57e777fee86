#include "cleaners/netscape_rules.h"

#include "platform/path_text.h"
#include "platform/text_value.h"

namespace cleaners {
using namespace platform;

bool IsInNameList(std::string_view fileName, std::string_view nameList) {
  return UpperCase(nameList).find(UpperCase(fileName)) != std::string::npos;
}

std::string ProfileFolderOf(const std::string& installDirectory, const std::string& userName) {
  constexpr std::string_view kProgram = "Communicator";
  const std::string users = "Users\\" + userName;
  std::string folder = installDirectory;
  for (std::size_t at = folder.find(kProgram); at != std::string::npos; at = folder.find(kProgram, at + users.size()))
    folder.replace(at, kProgram.size(), users);
  return AppendBackslash(folder);
}

bool IsUserName(std::string_view text) {
  constexpr auto kNone = std::string_view::npos;
  return text.find_first_not_of(" .") != kNone && text.find_first_of("\\/:") == kNone;
}

}  // namespace cleaners
