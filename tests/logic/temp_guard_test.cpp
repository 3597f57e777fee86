#include "cleaners/temp_guard.h"

#include <gtest/gtest.h>

#include <cctype>

#include "shown.h"

using namespace cleaners;
using namespace platform;

namespace {

const std::vector<WideText> kKeepOfWindows98 = {
    u"C:\\WINDOWS\\",          u"C:\\WINDOWS\\SYSTEM\\", u"C:\\PROGRA~1\\QUELLIX\\", u"", u"", u"C:\\PROGRA~1\\",
    u"C:\\WINDOWS\\DESKTOP\\", u"C:\\MYDOCU~1\\",        u"C:\\WINDOWS\\APPLIC~1\\"};

const std::vector<WideText> kKeepOfWindowsXp = {
    u"C:\\WINDOWS\\",
    u"C:\\WINDOWS\\system32\\",
    u"C:\\PROGRA~1\\Quellix\\",
    u"C:\\PROGRA~1\\",
    u"C:\\DOCUME~1\\joe\\",
    u"C:\\DOCUME~1\\joe\\Desktop\\",
    u"C:\\DOCUME~1\\joe\\MYDOCU~1\\",
    u"C:\\DOCUME~1\\joe\\APPLIC~1\\",
    u"C:\\DOCUME~1\\joe\\LOCALS~1\\APPLIC~1\\",
};

// A variable that names `path`, and a system that takes it as it is.
TempFolderFacts Named(const WideText& path, const std::vector<WideText>& keep = kKeepOfWindowsXp) {
  TempFolderFacts facts;
  facts.configured = path;
  facts.reported = AppendBackslash(path);
  facts.canonical = facts.folder = FullPath(path);
  for (const WideText& kept : keep) facts.keep.push_back(FullPath(kept));
  return facts;
}

std::string Told(const TempFolderFacts& facts) {
  using testing::PrintToString;
  return " " + PrintToString(facts.canonical) + ", configured " + PrintToString(facts.configured) + ", reported " +
         PrintToString(facts.reported);
}

void ExpectAllowed(const TempFolderFacts& facts) { EXPECT_TRUE(MayClearTempFolder(facts)) << "refused" << Told(facts); }

void ExpectRefused(const TempFolderFacts& facts) { EXPECT_FALSE(MayClearTempFolder(facts)) << "would empty" << Told(facts); }

// Neither a folder of a drive nor one of a share.
const char16_t* const kNotFolders[] = {
    u"",
    u" ",
    u"\\",
    u"/",
    u".",
    u"..",
    u"TEMP",
    u"TEMP\\X",
    u".\\TEMP",
    u"..\\TEMP",
    u"\\TEMP",
    u"C",
    u"C:",
    u"c:",
    u"C:TEMP",
    u"C:.",
    u"C:..",
    u"C:/TEMP",
    u"C:/",
    u"1:\\TEMP",
    u"?:\\TEMP",
    u"::\\TEMP",
    u"CC:\\TEMP",
    u"%TEMP%",
    u"\"C:\\TEMP\"",
    u"file:///C:/TEMP",
    u"//server/share/temp",
    u"\\\\",
    u"\\\\server",
    u"\\\\server\\",
    u"\\\\\\share\\temp",
    u"\\\\server\\\\temp",
    u"\\\\.\\C:\\TEMP",
    u"\\\\.\\C:",
    u"\\\\?\\C:\\TEMP",
    u"\\\\?\\UNC\\server\\share\\temp",
    u"\\\\.\\PhysicalDrive0",
    u"\\\\.\\pipe\\x",
    u"\\??\\C:\\TEMP",
};

const char16_t* const kRoots[] = {
    u"C:\\",
    u"c:\\",
    u"D:\\",
    u"Z:\\",
    u"C:\\\\",
    u"\\\\server\\share",
    u"\\\\server\\share\\",
    u"\\\\server\\C$\\",
    u"\\\\s\\h",
    u"\\\\server\\share\\\\",
};

}  // namespace

TEST(TempGuard, AllowsTheUsualTempFolders) {
  for (const char16_t* path :
       {u"C:\\WINDOWS\\TEMP", u"c:\\windows\\temp", u"C:\\TEMP", u"C:\\TEMP\\", u"D:\\TEMP", u"C:\\TMP\\JOE", u"Z:\\A",
        u"C:\\WINNT\\TEMP", u"\\\\server\\share\\temp", u"\\\\server\\share\\temp\\joe\\"}) {
    ExpectAllowed(Named(path));
    ExpectAllowed(Named(path, kKeepOfWindows98));
  }
  ExpectAllowed(Named(u"C:\\DOCUME~1\\joe\\LOCALS~1\\Temp"));
  ExpectAllowed(Named(u"C:\\DOCUME~1\\joe\\LOCALS~1\\Temp\\"));
}

TEST(TempGuard, AllowsAFolderWhoseNameOnlyBeginsLikeAKeptOne) {
  for (const char16_t* path :
       {u"C:\\WINDOWS.OLD", u"C:\\WINDOWSTEMP", u"C:\\WINDOWS2", u"C:\\WINDOW", u"C:\\WINNT.TMP", u"C:\\WINNTTEMP",
        u"C:\\PROGRA~2", u"C:\\PROGRA~1\\Quellix2", u"C:\\DOCUME~1\\joel", u"C:\\DOCUME~1\\jo",
        u"C:\\DOCUME~1\\joe\\Desktop2", u"D:\\WINDOWS", u"D:\\DOCUME~1\\joe", u"C:\\A\\WINDOWS"})
    ExpectAllowed(Named(path));
}

TEST(TempGuard, AllowsAFolderBelowAKeptOne) {
  for (const WideText& kept : kKeepOfWindowsXp) ExpectAllowed(Named(kept + u"Temp"));
}

TEST(TempGuard, RefusesTheWindowsFoldersByName) {
  for (const char16_t* path : {u"C:\\WINDOWS", u"C:\\WINDOWS\\", u"c:\\windows", u"c:\\windows\\", u"C:\\Windows",
                               u"C:\\WINNT", u"c:\\winnt\\", u"C:\\WinNT", u"  C:\\WINDOWS", u"  c:\\winnt\\"}) {
    TempFolderFacts facts = Named(path, {});
    ExpectRefused(facts);
    facts.configured = u"D:\\TEMP";
    facts.canonical = FullPath(u"D:\\TEMP\\");
    ExpectRefused(facts);
    facts.reported += u"   ";
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesWhenTheVariableNamesNoFolderOfADriveOrShare) {
  for (const char16_t* path : kNotFolders) {
    ExpectRefused(Named(path));
    TempFolderFacts facts = Named(u"C:\\TEMP");
    facts.configured = path;
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesWhenTheSystemMakesNoFolderOfADriveOrShareOfIt) {
  for (const char16_t* path : kNotFolders) {
    TempFolderFacts facts = Named(u"C:\\TEMP", {});
    facts.canonical = FullPath(path);
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesARoot) {
  for (const char16_t* path : kRoots) {
    ExpectRefused(Named(path));
    ExpectRefused(Named(path, {}));
    TempFolderFacts facts = Named(u"C:\\TEMP", {});
    facts.canonical = FullPath(path);
    ExpectRefused(facts);
  }
}

TEST(TempGuard, RefusesALink) {
  TempFolderFacts facts = Named(u"D:\\TEMP");
  ExpectAllowed(facts);
  facts.isLink = true;
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesEveryKeptFolderInAnyCaseWithAndWithoutABackslash) {
  for (const auto& keep : {kKeepOfWindows98, kKeepOfWindowsXp}) {
    for (const WideText& kept : keep) {
      if (kept.empty()) continue;
      WideText upper = kept, lower = kept;
      for (WideChar& c : upper) c = static_cast<WideChar>(std::toupper(c));
      for (WideChar& c : lower) c = static_cast<WideChar>(std::tolower(c));
      for (const WideText& path : {kept, upper, lower, kept.substr(0, kept.size() - 1)}) ExpectRefused(Named(path, keep));
    }
  }
}

TEST(TempGuard, RefusesAFolderThatHoldsAKeptOne) {
  for (const char16_t* path :
       {u"C:\\DOCUME~1", u"c:\\docume~1\\", u"C:\\DOCUME~1\\joe\\LOCALS~1", u"C:\\DOCUME~1\\JOE\\locals~1\\"})
    ExpectRefused(Named(path));
  ExpectRefused(Named(u"D:\\A", {u"D:\\A\\B\\C\\D\\E\\"}));
  ExpectRefused(Named(u"\\\\server\\share\\profiles", {u"\\\\SERVER\\share\\Profiles\\joe\\"}));
}

TEST(TempGuard, LooksAtEveryKeptFolder) {
  ExpectRefused(Named(u"D:\\A", {u"D:\\A\\", u"E:\\B\\", u"E:\\C\\"}));
  ExpectRefused(Named(u"D:\\A", {u"E:\\B\\", u"D:\\A\\", u"E:\\C\\"}));
  ExpectRefused(Named(u"D:\\A", {u"E:\\B\\", u"E:\\C\\", u"D:\\A\\"}));
  ExpectRefused(Named(u"D:\\A", {u"", u"", u"D:\\A"}));
}

TEST(TempGuard, PassesOverAKeptFolderThatTheSystemDoesNotHave) {
  ExpectAllowed(Named(u"D:\\A", {}));
  ExpectAllowed(Named(u"D:\\A", {u"", u""}));
}

TEST(TempGuard, DecidesByTheSpellingInFullAndInShortNames) {
  TempFolderFacts facts = Named(u"C:\\Documents and Settings\\joe\\Local Settings\\Temp");
  facts.canonical = FullPath(u"C:\\DOCUME~1\\joe\\LOCALS~1\\Temp\\");
  ExpectAllowed(facts);

  const struct {
    const char16_t* path;
    const char16_t* canonical;
  } rows[] = {
      {u"C:\\Documents and Settings", u"C:\\DOCUME~1\\"},
      {u"C:\\Documents and Settings\\joe", u"C:\\DOCUME~1\\joe\\"},
      {u"C:\\Documents and Settings\\joe\\My Documents", u"C:\\DOCUME~1\\joe\\MYDOCU~1\\"},
      {u"C:\\Program Files", u"C:\\PROGRA~1\\"},
      {u"C:\\TEMP\\..\\WINDOWS", u"C:\\WINDOWS\\"},
      {u"C:\\TEMP\\..", u"C:\\"},
      {u"C:\\TEMP\\..\\PROGRA~1\\.", u"C:\\PROGRA~1\\"},
      {u"C:\\WINDOWS.", u"C:\\WINDOWS\\"},
  };
  for (const auto& row : rows) {
    facts = Named(row.path);
    facts.canonical = FullPath(row.canonical);
    ExpectRefused(facts);
  }
}

// Windows 95 and 98 report the current folder when the folders that the variables name do not exist.
TEST(TempGuard, RefusesAFolderThatNoVariableNames) {
  TempFolderFacts facts = Named(u"D:\\PHOTOS", kKeepOfWindows98);
  facts.configured = u"C:\\GONE";
  ExpectRefused(facts);
  facts.configured = u"D:\\PHOTOS\\GONE";
  ExpectRefused(facts);
  facts.configured = u"D:\\";
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesAFolderThatLeadsToAKeptOneByAnotherPath) {
  TempFolderFacts facts = Named(u"X:\\TEMP");
  ExpectAllowed(facts);
  facts.leadsToKept = true;
  ExpectRefused(facts);
}

TEST(TempGuard, AllowsInsideTheFoldersOfAllOnlyWhatIsCalledTempOrTmp) {
  const struct {
    const char16_t* path;
    bool allowed;
  } rows[] = {
      {u"C:\\WINDOWS\\TEMP", true},    {u"C:\\WINDOWS\\Tmp", true},
      {u"C:\\PROGRA~1\\A\\tmp", true}, {u"C:\\WINDOWS\\system32\\drivers", false},
      {u"C:\\WINDOWS\\Fonts", false},  {u"C:\\WINDOWS\\TEMP\\A", false},
      {u"C:\\WINDOWS\\TEMPS", false},  {u"C:\\WINDOWS\\TEM", false},
      {u"C:\\WINDOWS\\A.TMP", false},  {u"C:\\WINDOWS\\TMP.", false},
      {u"C:\\WINDOWS\\ TMP", false},   {u"C:\\WINDOWS\\TEMP~1", false},
  };
  for (const auto& row : rows) {
    TempFolderFacts facts = Named(row.path);
    ExpectAllowed(facts);
    facts.liesInShared = true;
    EXPECT_EQ(MayClearTempFolder(facts), row.allowed) << Told(facts);
  }
}

// The variable may name a link of any name: what counts is where the folder is.
TEST(TempGuard, GoesByTheNameThatTheFolderReallyHas) {
  TempFolderFacts facts = Named(u"D:\\TEMP");
  facts.liesInShared = true;
  facts.folder = FullPath(u"C:\\WINDOWS\\Fonts");
  ExpectRefused(facts);
  facts = Named(u"D:\\Fonts");
  facts.liesInShared = true;
  facts.folder = FullPath(u"C:\\WINDOWS\\Temp");
  ExpectAllowed(facts);
}

TEST(TempGuard, RefusesAVolumesUppermostFolder) {
  TempFolderFacts facts = Named(u"D:\\TEMP");
  facts.isVolume = true;
  ExpectRefused(facts);
}

TEST(TempGuard, RefusesAPathWithAWildcardInIt) {
  for (const char16_t* path : {u"C:\\T?MP", u"C:\\TEMP\\*"}) ExpectRefused(Named(path));
}

// One folder to the file system, and short enough to have no short name beside its own.
TEST(TempGuard, RefusesAKeptFolderWhoseAccentedLettersDifferInCase) {
  ExpectRefused(Named(u"C:\\DOCUME~1\\JOS\u00C9", {u"C:\\DOCUME~1\\Jos\u00E9\\"}));
  ExpectRefused(Named(u"C:\\DOCUME~1\\j\u00FCrgen", {u"C:\\DOCUME~1\\J\u00DCRGEN\\Desktop\\"}));
}
