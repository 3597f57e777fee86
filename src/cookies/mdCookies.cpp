#include "cookies/mdCookies.h"

#include "cookies/keep_list.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/whole_file.h"

namespace cookies {
using namespace platform;

bool IsKept(const ListBox& list, const std::string& name) {
  for (int line = 0; line < list.ListCount(); ++line) {
    if (IsSameCookie(list.Item(line), name)) return true;
    DoEvents();
  }
  return false;
}

void SaveList(const ListBox& list, const std::string& path) {
  resumeNext([&] {
    CookieNames names;
    for (int line = 0; line < list.ListCount(); ++line) names.push_back(list.Item(line));
    ReplaceWholeFile(path, KeepListText(names));
  });
  Err.Clear();
}

bool LoadList(ListBox& list, const std::string& path, const bool* cutShort) {
  list.Clear();
  CookieNames names;
  Err.Clear();
  resumeNext([&] { names = ReadKeepList(ReadWholeFile(path)); });
  const bool missing = Err.Number() == kFileNotFound || Err.Number() == kPathNotFound;
  const bool read = Err.Number() == 0 || missing;
  Err.Clear();
  const ListBox::Filling quietly(list);
  for (const std::string& name : names) {
    list.AddItem(name);
    DoEvents();
    if (cutShort != nullptr && *cutShort) break;
  }
  return read;
}

}  // namespace cookies
