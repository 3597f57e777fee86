// Folders of the system, of its user and of the program.
#pragma once

#include "platform/path.h"

namespace platform {

// Shell folder identifiers (the CSIDL_ values of shlobj.h).
enum SpecialFolder : int {
  kDocumentsFolder = 5,
  kDesktopFolder = 16,
  kApplicationDataFolder = 26,
  kLocalApplicationDataFolder = 28,
  kCookiesFolder = 33,
  kHistoryFolder = 34,
  kProgramFilesFolder = 38,
  kProfileFolder = 40,
};

// Empty when the system does not know the identifier or the place is no folder of a disk.
Path FindSpecialFolder(int identifier);

Path WindowsFolder();
Path SystemFolder();

// The executable, and the folder that it is in.
Path ProgramFile();
Path ProgramFolder();

// The text of an environment variable; empty when it is not set.
WideText EnvironmentText(WideView name);

}  // namespace platform
