// Folders of the system and of the program. One that the ANSI code page cannot hold stands in its short form.
#pragma once

#include <string>

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

// The folder's path, with "\" behind it only where the system gives it so; empty when the system does not know the
// identifier or the place is no folder of a disk.
std::string FindSpecialFolder(int identifier);

// The path of the executable.
std::string ProgramFile();

// The folder of ProgramFile, without "\" behind it unless it is a root.
std::string ProgramFolder();

}  // namespace platform
