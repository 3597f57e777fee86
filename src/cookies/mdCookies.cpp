#include "cookies/mdCookies.h"

#include <string>
#include <vector>

#include "cookies/keep_list.h"
#include "platform/message_pump.h"
#include "platform/runtime_error.h"
#include "platform/whole_file.h"

namespace cookies {
using namespace platform;

bool IsKept(const ListBox& list, const WideText& name) {
  for (int line = 0; line < list.ListCount(); ++line) {
    if (IsSameCookie(list.Item(line), name)) return true;
    DoEventsNowAndThen();
  }
  return false;
}

int LineOf(const ListBox& list, const WideText& name) {
  for (int line = 0; line < list.ListCount(); ++line)
    if (IsSameCookie(list.Item(line), name)) return line;
  return -1;
}

void SaveList(const ListBox& list, const Path& path) {
  quietly([&] {
    CookieNames names;
    for (int line = 0; line < list.ListCount(); ++line) names.push_back(list.Item(line));
    ReplaceWholeFile(path, KeepListText(names));
  });
}

bool LoadList(ListBox& list, const Path& path, const bool* cutShort) {
  list.Clear();
  CookieNames names;
  const RuntimeError failure = failureOf([&] { names = ReadKeepList(ReadWholeFile(path)); });
  const bool missing = failure.number == kFileNotFound || failure.number == kPathNotFound;
  const bool read = !failure || (missing && !path.IsEmpty());  // an empty one says nothing about the list
  const ListBox::Filling quietly(list);
  for (const WideText& name : names) {
    list.AddItem(name);
    DoEvents();
    if (cutShort != nullptr && *cutShort) break;
  }
  return read;
}

}  // namespace cookies
