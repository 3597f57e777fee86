// Whatever a reparse point holds, its text lies within the data, and following it ends: at a whole path without a link on
// its way, or nowhere.
#include <algorithm>
#include <string>

#include "platform/link_target.h"
#include "platform/wide_system.h"
#include "property.h"
#include "wide_input.h"

using namespace platform;

namespace {

LinkText link;

// One link on every disk, at a folder of this name.
std::optional<LinkText> Read(const Path& folder) {
  if (folder.Name() != u"link") return {};
  return link;
}

bool HasALinkOnItsWay(Path path) {
  for (; !path.IsEmpty(); path.RemoveName())
    if (Read(path) && !link.isOwnPlace) return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  link = ReadReparseData(bytes);
  PROPERTY(2 * link.text.size() <= size, "%zu of %zu", link.text.size(), size);
  for (const char16_t* text : {u"C:\\link", u"C:\\a\\link\\b", u"\\\\server\\share\\link"}) {
    const Path path = FullPath(text);
    const Path reached = FollowLinks(path, &Read);
    const std::string told = Readable(reached.Shown());
    PROPERTY(reached.IsEmpty() || !HasALinkOnItsWay(reached), "[%s]", told.c_str());
    PROPERTY(reached.IsEmpty() || FullPath(reached.Shown()) == reached, "[%s]", told.c_str());
    PROPERTY(!link.isOwnPlace || reached == path, "[%s]", told.c_str());
  }
  return 0;
}
