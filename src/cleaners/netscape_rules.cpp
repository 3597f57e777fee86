#include "cleaners/netscape_rules.h"

#include "platform/path.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

bool IsInNameList(WideView fileName, WideView nameList) {
  return UpperCase(nameList).find(UpperCase(fileName)) != WideText::npos;
}

WideText ProfileFolderOf(WideView installDirectory, WideView userName) {
  constexpr WideView kProgram = Wide<"Communicator">();
  const WideText users = WideText(Wide<"Users\\">()).append(userName);
  WideText folder(installDirectory);
  for (std::size_t at = folder.find(kProgram); at != WideText::npos; at = folder.find(kProgram, at + users.size()))
    folder.replace(at, kProgram.size(), users);
  return AppendBackslash(folder);
}

bool IsUserName(WideView text) {
  return text.find_first_not_of(Wide<" .">()) != WideView::npos && text.find_first_of(Wide<"\\/:">()) == WideView::npos;
}

}  // namespace cleaners
