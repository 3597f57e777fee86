// The operating system's name as the program writes and tests it ("XP", "2000", "NT" are looked for in it).
#pragma once

#include <string>

namespace platform {

// What GetVersionEx answers: the platform identifier is 0 (Win32s), 1 (the 9x family) or 2 (the NT family).
struct WindowsVersion {
  unsigned long platform;
  unsigned long major;
  unsigned long minor;
  unsigned long build;
};

// Windows Me reads as 98 and Server 2003 as 2000: what is done for those is right for these. Empty for an NT system later
// than 5.x, which lacks the call for the task list as every NT system does.
std::string OsNameOf(const WindowsVersion& version);

// The name found at start-up, shared by every room.
inline std::string OsName;

}  // namespace platform
