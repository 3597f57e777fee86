// Cleaners of Netscape Communicator 4, Netscape 6 and 7 and Mozilla: typed addresses, the mail's trash, the cache.
//
// Each of them first collects what it is to remove, from the profile of Communicator 4, from that of Netscape 6/7 and from
// a search below the folder of Mozilla's profiles, and then removes one after another until the stop request. What is
// missing or cannot be opened is passed over. Nothing is shown and nothing logged.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/path.h"

namespace cleaners {
using namespace platform;

void NSTypedUrl();
void CleanNetscapeMail();
void CleanNescapeCache();

// What a cleaner collects. The first element is always empty; what is to be removed begins at index 1.
using FileList = std::vector<Path>;

// Appends every file below `root` whose name occurs in the list's text (netscape_rules.h), and every folder whose name is
// `name`, ignoring case. Links are not followed. Nothing is found below a root that cannot be opened.
void FindFilesByName(const Path& root, WideView nameList, FileList& results);
void FindFoldersByName(const Path& root, WideView name, FileList& results);

// Overwrites an existing file `passes` times (WipePasses: not once) and deletes it, unless the stop request
// comes meanwhile.
void DeleteFile(const Path& path, const std::int16_t& passes);

// Deletes what is in the folder, to any depth; the folder itself stays. A link in it goes as a link. Does nothing for an
// empty path, a root and a folder that is a link itself.
void ClearDirectory(const Path& folder);

}  // namespace cleaners
