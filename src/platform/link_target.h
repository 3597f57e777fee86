// Where a link to a folder leads, from what the system tells of it: for systems that do not follow a whole path themselves
// when they are asked (before Windows Vista), and for the substituted drives of Windows 9x.
#pragma once

#include <optional>
#include <string_view>

#include "platform/path.h"

namespace platform {

struct LinkText {
  WideText text;            // empty for a kind of link that nobody here knows, and for damaged data
  bool isRelative = false;  // to the folder that the link lies in, or to its drive
  bool isOwnPlace = false;  // a volume that shows up in the folder: nothing to follow
};

// The data of a reparse point as FSCTL_GET_REPARSE_POINT answers it.
LinkText ReadReparseData(std::string_view data);

// The folder that a link in the folder `place` leads to; empty where that cannot be told.
Path LinkTarget(const Path& place, const LinkText& link);

// Nothing for what is no link.
using LinkReader = std::optional<LinkText> (*)(const Path& folder);

// The path with every link on the way followed, the last name included. Empty where one leads nowhere or in a circle, or
// cannot be read.
Path FollowLinks(const Path& path, LinkReader read);

// What QueryDosDevice answers for a drive ("C:"); empty for one that the system does not tell about.
using DeviceReader = WideText (*)(WideView drive);

// The path with substituted drives replaced by their folders; empty for drives that are substituted in a circle.
Path FollowSubstitutions(const Path& path, DeviceReader read);

}  // namespace platform
