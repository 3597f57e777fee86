// Folders of the system, of its user and of the program.
#pragma once

#include "platform/path.h"

namespace platform {

// Shell folder identifiers (the CSIDL_ values of shlobj.h).
enum SpecialFolder : int {
  kProgramsFolder = 2,  // of the start menu
  kDocumentsFolder = 5,
  kFavoritesFolder = 6,
  kRecentFolder = 8,
  kStartMenuFolder = 11,
  kMusicFolder = 13,
  kVideoFolder = 14,
  kDesktopFolder = 16,
  kTemplatesFolder = 21,
  kAllStartMenuFolder = 22,  // "All": of all users
  kAllProgramsFolder = 23,
  kAllDesktopFolder = 25,
  kApplicationDataFolder = 26,
  kLocalApplicationDataFolder = 28,
  kAllFavoritesFolder = 31,
  kCookiesFolder = 33,
  kHistoryFolder = 34,
  kAllApplicationDataFolder = 35,
  kProgramFilesFolder = 38,
  kPicturesFolder = 39,
  kProfileFolder = 40,
  kProgramFilesX86Folder = 42,
  kCommonFilesFolder = 43,
  kCommonFilesX86Folder = 44,
  kAllTemplatesFolder = 45,
  kAllDocumentsFolder = 46,
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
