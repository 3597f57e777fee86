#include "cleaners/temp_guard.h"

#include <gtest/gtest.h>

#include <cctype>

#include "platform/path_text.h"

using namespace cleaners;
using namespace platform;

namespace {

const std::vector<std::string> kKeepOfWindows98 = {
    "C:\\WINDOWS\\",          "C:\\WINDOWS\\SYSTEM\\", "C:\\PROGRA~1\\QUELLIX\\", "", "", "C:\\PROGRA~1\\",
    "C:\\WINDOWS\\DESKTOP\\", "C:\\MYDOCU~1\\",        "C:\\WINDOWS\\APPLIC~1\\"};

const std::vector<std::string> kKeepOfWindowsXp = {
    "C:\\WINDOWS\\",
    "C:\\WINDOWS\\system32\\",
    "C:\\PROGRA~1\\Quellix\\",
    "C:\\PROGRA~1\\",
    "C:\\DOCUME~1\\joe\\",
    "C:\\DOCUME~1\\joe\\Desktop\\",
    "C:\\DOCUME~1\\joe\\MYDOCU~1\\",
    "C:\\DOCUME~1\\joe\\APPLIC~1\\",
    "C:\\DOCUME~1\\joe\\LOCALS~1\\APPLIC~1\\",
};

// A variable that names `path`, and a system that takes it as it stands.
TempFolderFacts Named(const std::string& path, const std::vector<std::string>& keep = kKeepOfWindowsXp) {
  TempFolderFacts facts;
  facts.configured = path;
  facts.reported = AppendBackslash(path);
  facts.canonical = AppendBackslash(path);
  facts.keep = keep;
  return facts;
}

void ExpectAllowed(const TempFolderFacts& facts) {
  EXPECT_TRUE(MayCleanTempFolder(facts)) << "refused [" << facts.canonical << "], configured [" << facts.configured << "]";
}

void ExpectRefused(const TempFolderFacts& facts) {
  EXPECT_FALSE(MayCleanTempFolder(facts)) << "would empty [" << facts.canonical << "], configured [" << facts.configured
                                          << "], reported [" << facts.reported << "]";
}

// Neither a folder of a drive nor one of a share.
const char* const kNotFolders[] = {
    "",
    " ",
    "\\",
    "/",
    ".",
    "..",
    "TEMP",
    "TEMP\\X",
    ".\\TEMP",
    "..\\TEMP",
    "\\TEMP",
    "C",
    "C:",
    "c:",
    "C:TEMP",
    "C:.",
    "C:..",
    "C:/TEMP",
    "C:/",
    "1:\\TEMP",
    "?:\\TEMP",
    "::\\TEMP",
    "CC:\\TEMP",
    "%TEMP%",
    "\"C:\\TEMP\"",
    "file:///C:/TEMP",
    "//server/share/temp",
    "\\\\",
    "\\\\server",
    "\\\\server\\",
    "\\\\\\share\\temp",
    "\\\\server\\\\temp",
    "\\\\.\\C:\\TEMP",
    "\\\\.\\C:",
    "\\\\?\\C:\\TEMP",
    "\\\\?\\UNC\\server\\share\\temp",
    "\\\\.\\PhysicalDrive0",
    "\\\\.\\pipe\\x",
    "\\??\\C:\\TEMP",
};

const char* const kRoots[] = {
    "C:\\",
    "c:\\",
    "D:\\",
    "Z:\\",
    "C:\\\\",
    "\\\\server\\share",
    "\\\\server\\share\\",
    "\\\\server\\C$\\",
    "\\\\s\\h",
    "\\\\server\\share\\\\",
};

}  // namespace

TEST(TempGuard, AllowsTheUsualTempFolders) {
  for (const char* path : {"C:\\WINDOWS\\TEMP", "c:\\windows\\temp", "C:\\TEMP", "C:\\TEMP\\", "D:\\TEMP", "C:\\TMP\\JOE",
                           "Z:\\A", "C:\\WINNT\\TEMP", "\\\\server\\share\\temp", "\\\\server\\share\\temp\\joe\\"}) {
    ExpectAllowed(Named(path));
    ExpectAllowed(Named(path, kKeepOfWindows98));
  }
  ExpectAllowed(Named("C:\\DOCUME~1\\joe\\LOCALS~1\\Temp"));
  ExpectAllowed(Named("C:\\DOCUME~1\\joe\\LOCALS~1\\Temp\\"));
}

TEST(TempGuard, AllowsAFolderWhoseNameOnlyBeginsLikeAKeptOne) {
  for (const char* path :
       {"C:\\WINDOWS.OLD", "C:\\WINDOWSTEMP", "C:\\WINDOWS2", "C:\\WINDOW", "C:\\WINNT.TMP", "C:\\WINNTTEMP", "C:\\PROGRA~2",
        "C:\\PROGRA~1\\Quellix2", "C:\\DOCUME~1\\joel", "C:\\DOCUME~1\\jo", "C:\\DOCUME~1\\joe\\Desktop2", "D:\\WINDOWS",
        "D:\\DOCUME~1\\joe", "C:\\A\\WINDOWS"})
    ExpectAllowed(Named(path));
}

TEST(TempGuard, AllowsAFolderBelowAKeptOne) {
  for (const std::string& kept : kKeepOfWindowsXp) ExpectAllowed(Named(kept + "Temp"));
}

TEST(TempGuard, RefusesTheWindowsFoldersByName) {
  for (const char* path : {"C:\\WINDOWS", "C:\\WINDOWS\\", "c:\\windows", "c:\\windows\\", "C:\\Windows", "C:\\WINNT",
                           "c:\\winnt\\", "C:\\WinNT", "  C:\\WINDOWS", "  c:\\winnt\\"}) {
    TempFolderFacts facts = Named(path, {});
    ExpectRefused(facts);
    facts.configured = "D:\\TEMP";
    facts.canonical = "D:\\TEMP\\";
    ExpectRefused(facts);
    facts.reported += "   ";
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesWhenTheVariableNamesNoFolderOfADriveOrShare) {
  for (const char* path : kNotFolders) {
    ExpectRefused(Named(path));
    TempFolderFacts facts = Named("C:\\TEMP");
    facts.configured = path;
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesWhenTheSystemMakesNoFolderOfADriveOrShareOfIt) {
  for (const char* path : kNotFolders) {
    TempFolderFacts facts = Named("C:\\TEMP", {});
    facts.canonical = path;
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesARoot) {
  for (const char* path : kRoots) {
    ExpectRefused(Named(path));
    ExpectRefused(Named(path, {}));
    TempFolderFacts facts = Named("C:\\TEMP", {});
    facts.canonical = path;
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesALink) {
  TempFolderFacts facts = Named("D:\\TEMP");
  ExpectAllowed(facts);
  facts.isLink = true;
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesEveryKeptFolderInAnyCaseWithAndWithoutABackslash) {
  for (const auto& keep : {kKeepOfWindows98, kKeepOfWindowsXp}) {
    for (const std::string& kept : keep) {
      if (kept.empty()) continue;
      std::string upper = kept, lower = kept;
      for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      for (const std::string& path : {kept, upper, lower, kept.substr(0, kept.size() - 1)}) ExpectRefused(Named(path, keep));
    }
  }
}

TEST(TempGuard, RefusesAFolderThatHoldsAKeptOne) {
  for (const char* path : {"C:\\DOCUME~1", "c:\\docume~1\\", "C:\\DOCUME~1\\joe\\LOCALS~1", "C:\\DOCUME~1\\JOE\\locals~1\\"})
    ExpectRefused(Named(path));
  ExpectRefused(Named("D:\\A", {"D:\\A\\B\\C\\D\\E\\"}));
  ExpectRefused(Named("\\\\server\\share\\profiles", {"\\\\SERVER\\share\\Profiles\\joe\\"}));
}

TEST(TempGuard, LooksAtEveryKeptFolder) {
  ExpectRefused(Named("D:\\A", {"D:\\A\\", "E:\\B\\", "E:\\C\\"}));
  ExpectRefused(Named("D:\\A", {"E:\\B\\", "D:\\A\\", "E:\\C\\"}));
  ExpectRefused(Named("D:\\A", {"E:\\B\\", "E:\\C\\", "D:\\A\\"}));
  ExpectRefused(Named("D:\\A", {"", "", "D:\\A"}));
}

TEST(TempGuard, PassesOverAKeptFolderThatTheSystemDoesNotHave) {
  ExpectAllowed(Named("D:\\A", {}));
  ExpectAllowed(Named("D:\\A", {"", ""}));
}

TEST(TempGuard, DecidesByTheSpellingInFullAndInShortNames) {
  TempFolderFacts facts = Named("C:\\Documents and Settings\\joe\\Local Settings\\Temp");
  facts.canonical = "C:\\DOCUME~1\\joe\\LOCALS~1\\Temp\\";
  ExpectAllowed(facts);

  const struct {
    const char* path;
    const char* canonical;
  } rows[] = {
      {"C:\\Documents and Settings", "C:\\DOCUME~1\\"},
      {"C:\\Documents and Settings\\joe", "C:\\DOCUME~1\\joe\\"},
      {"C:\\Documents and Settings\\joe\\My Documents", "C:\\DOCUME~1\\joe\\MYDOCU~1\\"},
      {"C:\\Program Files", "C:\\PROGRA~1\\"},
      {"C:\\TEMP\\..\\WINDOWS", "C:\\WINDOWS\\"},
      {"C:\\TEMP\\..", "C:\\"},
      {"C:\\TEMP\\..\\PROGRA~1\\.", "C:\\PROGRA~1\\"},
      {"C:\\WINDOWS.", "C:\\WINDOWS\\"},
  };
  for (const auto& row : rows) {
    facts = Named(row.path);
    facts.canonical = row.canonical;
    ExpectRefused(facts);
  }
}

// Windows 95 and 98 report the current folder when the folders that the variables name do not exist.
TEST(TempGuard, RefusesAFolderThatNoVariableNames) {
  TempFolderFacts facts = Named("D:\\PHOTOS", kKeepOfWindows98);
  facts.configured = "C:\\GONE";
  ExpectRefused(facts);
  facts.configured = "D:\\PHOTOS\\GONE";
  ExpectRefused(facts);
  facts.configured = "D:\\";
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesAFolderThatLeadsToAKeptOneByAnotherPath) {
  TempFolderFacts facts = Named("X:\\TEMP");
  ExpectAllowed(facts);
  facts.leadsToKept = true;
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesAPathWithAWildcardInIt) {
  for (const char* path : {"C:\\T?MP", "C:\\TEMP\\*"}) ExpectRefused(Named(path));
}

// One folder to the file system, and short enough to have no short name beside its own. The letters are those of the
// code page 1252.
TEST(TempGuard, RefusesAKeptFolderWhoseAccentedLettersDifferInCase) {
  ExpectRefused(Named("C:\\DOCUME~1\\JOS\xC9", {"C:\\DOCUME~1\\Jos\xE9\\"}));
  ExpectRefused(Named("C:\\DOCUME~1\\j\xFCrgen", {"C:\\DOCUME~1\\J\xDCRGEN\\Desktop\\"}));
}
