// The cleaners of Opera in both of its layouts, by wide names and by ANSI names. Links and names outside the code page come
// from opera_prepare.py, which also looks at the disk afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "ansi_paths.h"
#include "cleaners/OperaClean.h"
#include "cleaners/wipe_state.h"
#include "connection.h"
#include "exchange_on_deletion.h"
#include "file_calls.h"
#include "log_recorder.h"
#include "nothing_pending.h"
#include "nothing_said.h"
#include "platform/ErroHandle.h"
#include "platform/Reg32.h"
#include "platform/native_files.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "run_item.h"
#include "scratch_folder.h"
#include "scratch_key.h"
#include "second_name.h"
#include "shell_folders.h"
#include "window_event.h"

using namespace cleaners;
using namespace erase;
using namespace platform;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

constexpr void (*kCleaners[])() = {&CleanOperaCookies, &CleanOpera7Cookies, &CleanOperaCache, &CleanOpera7Cache,
                                   &CleanOperaTypedUrls};

class Opera : public ByEitherNames {
 protected:
  static void SetUpTestSuite() { GoOffline(); }

  void SetUp() override {
    ByEitherNames::SetUp();
    ::SetCurrentDirectoryA(current.Path().c_str());
    shell.Move(kApplicationDataFolder, data.Path());
  }

  void TearDown() override {
    ByEitherNames::TearDown();
    EXPECT_EQ(log.Lines(), LogLines()) << "the run writes the lines, not the cleaner";
  }

  // Folder names outside the code page, for the two ways.
  static std::wstring StrangeData() {
    return ByAnsi() ? L"C:\\plant\\ansi\\\u0416\u0436" : L"C:\\plant\\wide\\\u0416\u0436";
  }

  std::string Planted(const std::string& name) const { return "C:\\plant\\" + std::string(GetParam()) + "\\" + name; }

  static void CleanEverything() {
    for (const auto cleaner : kCleaners) cleaner();
  }

  void PutInProfile(const Names& names) const {
    for (const std::string& name : names) PutFile(profile + "\\" + name);
  }

  Names InProfile() const { return NamesBelow(profile); }

  const ShellFolders shell;
  const ScratchFolder current{"C:\\test\\current"};
  const ScratchFolder data{"C:\\test\\data"};
  const std::string profile = data / "Opera\\OPERA7\\profile";
  const ScratchKey opera{"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Opera.exe", HKEY_LOCAL_MACHINE};
  const LogRecorder log;
  const WindowEvents events;
};

INSTANTIATE_TEST_SUITE_P(Names, Opera, testing::ValuesIn(WaysOfNames()), NameOfWay);

UniqueFile Hold(const std::string& path) {
  return UniqueFile(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
}

}  // namespace

// Meant: the browser registers a path, and its number is 0.
TEST_P(Opera, HasTheNumberThatTheRegisteredPathIsForItsFolder) {
  EXPECT_EQ(OperaPath(), "0") << "nothing is registered";
  opera.Create();
  EXPECT_EQ(OperaPath(), "0") << "no value";
  const struct {
    const char* text;
    const char* path;
  } rows[] = {{"C:\\Program Files\\Opera7\\", "0"},
              {"", "0"},
              {" ", "0"},
              {"12abc", "0"},
              {"7 8", "0"},
              {"7", "7"},
              {" 42 ", "42"},
              {"007", "7"},
              {"-3", "-3"},
              {"7.5", "8"},
              {"6.5", "6"},
              {"1e3", "1000"},
              {"2147483647", "2147483647"},
              {"2147483648", "0"},
              {"1e999", "0"},
              {"0", "0"}};
  for (const auto& row : rows) {
    opera.PutText("Path", row.text);
    EXPECT_EQ(OperaPath(), row.path) << row.text;
  }
}

TEST_P(Opera, HasTheFolder0ForAValueThatIsNoText) {
  for (const DWORD type : {REG_NONE, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ}) {
    opera.Put("Path", type, std::string("7\0\0", 3));
    EXPECT_EQ(OperaPath(), "0") << type;
  }
}

TEST_P(Opera, HasAFolderForOddTexts) {
  opera.Put("Path", REG_SZ, std::string("7\0\\..\\..", 8));
  EXPECT_EQ(OperaPath(), "7") << "up to the first zero";
  opera.Put("Path", REG_SZ,
            std::string("\0"
                        "7",
                        2));
  EXPECT_EQ(OperaPath(), "0");
  opera.PutText("Path", std::string(10000, 'x'));
  EXPECT_EQ(OperaPath(), "0");
  opera.PutText("Path", std::string(10000, '9'));
  EXPECT_EQ(OperaPath(), "0");
  opera.PutText("Path", std::string(9999, '0') + "7");
  EXPECT_EQ(OperaPath(), "7");
}

// The registry's reader reports what is no number, and the reporter speaks while the machine is on line.
TEST_P(Opera, SaysNothingOfAPathThatIsNoNumber) {
  const NothingSaid nothing;
  for (const char* path : {"7", "C:\\Opera", "2147483648"}) {
    opera.PutText("Path", path);
    CleanEverything();
  }
  GoOffline();
  const ReportBurst burst;
  GetSettingString(HKEY_LOCAL_MACHINE, opera.Path(), "Path");
  EXPECT_EQ(burst.ReportsForTests(), 1) << "the reader itself tells the others";
}

TEST_P(Opera, LosesThePlainFilesOfItsCacheFolderBelowTheCurrentFolder) {
  for (const std::string text : {"C:\\Opera", "7"}) {
    opera.PutText("Path", text);
    const std::string mine = text == "7" ? "7" : "0", other = text == "7" ? "0" : "7";
    for (const std::string& folder : {mine, other})
      for (const char* name :
           {"\\Cache\\one.htm", "\\Cache\\two", "\\Cache\\sub\\three", "\\Cache.txt", "\\cookies.dat", "\\four"})
        current.File(folder + name);
    CleanOperaCache();
    EXPECT_THAT(NamesBelow(current / mine),
                UnorderedElementsAre("Cache", "Cache\\sub", "Cache\\sub\\three", "Cache.txt", "cookies.dat", "four"));
    CleanOperaCookies();
    EXPECT_THAT(NamesBelow(current / mine),
                UnorderedElementsAre("Cache", "Cache\\sub", "Cache\\sub\\three", "Cache.txt", "four"));
    EXPECT_EQ(NamesBelow(current / other).size(), 8u);
    for (const std::string& folder : {mine, other})
      for (const char* name :
           {"\\Cache\\one.htm", "\\Cache\\two", "\\Cache\\sub\\three", "\\Cache.txt", "\\cookies.dat", "\\four"})
        ::DeleteFileA((current / folder + name).c_str());
  }
}

TEST_P(Opera, LosesThePlainFilesOfItsSeventhCacheAndNothingElse) {
  PutInProfile({"cache4\\opr00001.htm", "cache4\\dcache4.url", "cache4\\sub\\x", "cache4.txt", "cookies4.dat", "global.dat",
                "opera6.adr", "cache\\x"});
  CleanOpera7Cache();
  EXPECT_THAT(InProfile(), UnorderedElementsAre("cache4", "cache4\\sub", "cache4\\sub\\x", "cache4.txt", "cookies4.dat",
                                                "global.dat", "opera6.adr", "cache", "cache\\x"));
}

TEST_P(Opera, LosesItsSeventhCookiesAndNothingElse) {
  PutInProfile({"cookies4.dat", "cookies.dat", "cookies4.dat2", "global.dat", "cache4\\cookies4.dat"});
  CleanOpera7Cookies();
  EXPECT_THAT(InProfile(),
              UnorderedElementsAre("cookies.dat", "cookies4.dat2", "global.dat", "cache4", "cache4\\cookies4.dat"));
}

TEST_P(Opera, LosesTheTwoFilesOfItsTypedAddressesOneAfterTheOther) {
  PutInProfile({"global.dat", "opera.dir", "vlink4.dat", "opera6.ini", "opera6.adr", "mail\\global.dat"});
  const FileCalls calls;
  CleanOperaTypedUrls();
  EXPECT_THAT(calls.Deleted(), ElementsAre(profile + "\\global.dat", profile + "\\opera.dir"));
  EXPECT_THAT(InProfile(), UnorderedElementsAre("vlink4.dat", "opera6.ini", "opera6.adr", "mail", "mail\\global.dat"));
}

TEST_P(Opera, KeepsLinks) {
  PutInProfile({"cookies4.dat", "cache4\\opr00001.htm"});
  {
    const FileCalls calls;
    calls.ShowAsLink(profile + "\\cookies4.dat");
    CleanOpera7Cookies();
    calls.ShowAsLink(profile + "\\cache4");
    CleanOpera7Cache();
    EXPECT_THAT(calls.Deleted(), IsEmpty());
  }
  EXPECT_THAT(InProfile(), UnorderedElementsAre("cookies4.dat", "cache4", "cache4\\opr00001.htm"));
}

TEST_P(Opera, KeepsTheRestOfACacheFolderThatALinkTookThePlaceOf) {
  const std::string place = "C:\\swap\\" + std::string(GetParam());
  shell.Move(kApplicationDataFolder, place);
  {
    const FileCalls calls;
    ExchangeAfterTheFirstDeletion(calls, events, place);
    CleanOpera7Cache();
    EXPECT_EQ(calls.Deleted().size(), 1u);
  }
  EXPECT_EQ(NamesBelow("C:\\outside\\" + std::string(GetParam()) + "\\twin").size(), 20u);
}

TEST_P(Opera, IsLookedForAfreshForEachOfThoseTwoFiles) {
  PutInProfile({"global.dat", "opera.dir"});
  const ScratchFolder moved("C:\\test\\moved");
  moved.File("Opera\\OPERA7\\profile\\global.dat");
  moved.File("Opera\\OPERA7\\profile\\opera.dir");
  const FileCalls calls;
  calls.AfterEachDeletion([&](const std::string&) { shell.Move(kApplicationDataFolder, moved.Path()); });
  CleanOperaTypedUrls();
  EXPECT_THAT(shell.Asked(), ElementsAre(kApplicationDataFolder, kApplicationDataFolder));
  EXPECT_THAT(InProfile(), ElementsAre("opera.dir"));
  EXPECT_THAT(NamesBelow(moved / "Opera\\OPERA7\\profile"), ElementsAre("global.dat"));
}

TEST_P(Opera, LosesNothingWhenItIsNotInstalled) {
  current.File("cookies.dat");
  current.File("Cache\\x");
  data.File("Opera\\OPERA7\\x");
  data.File("Opera\\cache4\\x");
  const Names before = NamesBelow("C:\\test");
  CleanEverything();
  EXPECT_EQ(NamesBelow("C:\\test"), before);
}

TEST_P(Opera, LosesNothingBelowTheCurrentFolderWhenTheSystemKnowsNoApplicationData) {
  for (const char* name : {"cache4\\x", "cookies4.dat", "global.dat", "opera.dir"}) {
    current.File(std::string("Opera\\OPERA7\\profile\\") + name);
    PutFile(std::string("C:\\Opera\\OPERA7\\profile\\") + name);
  }
  const Names before = NamesBelow(current.Path()), ofTheRoot = NamesBelow("C:\\Opera");
  shell.Forget(kApplicationDataFolder);
  CleanEverything();
  shell.MakeNoFolderOfADisk(kApplicationDataFolder);
  CleanEverything();
  EXPECT_EQ(NamesBelow(current.Path()), before);
  EXPECT_EQ(NamesBelow("C:\\Opera"), ofTheRoot);
}

TEST_P(Opera, KeepsReadOnlyHiddenAndSystemFilesAndFoldersOfTheNames) {
  const Names special = {"0\\Cache\\", "0\\cookies.dat", "cache4\\", "cookies4.dat", "global.dat", "opera.dir"};
  for (const DWORD attribute :
       {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM, FILE_ATTRIBUTE_DIRECTORY}) {
    Names kept;
    for (const std::string& name : special) {
      const std::string path =
          (name[0] == '0' ? current.Path() : profile) + "\\" + name + (name.ends_with('\\') ? "kept" : "");
      kept.push_back(path);
      if (attribute == FILE_ATTRIBUTE_DIRECTORY) {
        PutFile(path + "\\inner");
      } else {
        PutFile(path);
        ::SetFileAttributesA(path.c_str(), attribute);
      }
    }
    for (const std::string& folder : {current / "0\\Cache", profile + "\\cache4"}) {
      PutFile(folder + "\\a");
      PutFile(folder + "\\z");
    }
    const FileCalls calls;
    CleanEverything();
    const Names deleted = calls.Deleted();
    for (const std::string& path : kept) {
      EXPECT_EQ(std::count(deleted.begin(), deleted.end(), path), 0) << path << ", attribute " << attribute;
      EXPECT_TRUE(IsThere(path)) << path << ", attribute " << attribute;
      ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileA((path + "\\inner").c_str());
      ::RemoveDirectoryA(path.c_str());
      ::DeleteFileA(path.c_str());
    }
    EXPECT_THAT(NamesBelow(current / "0\\Cache"), IsEmpty()) << "attribute " << attribute;
    EXPECT_THAT(NamesBelow(profile + "\\cache4"), IsEmpty()) << "attribute " << attribute;
  }
}

TEST_P(Opera, KeepsItsCacheFoldersAsTheyAreWhileTheyAreHiddenOrOfTheSystem) {
  for (const DWORD attribute : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
    for (const std::string& hidden : {current / "0\\Cache", profile + "\\cache4"}) {
      const std::string other = hidden.starts_with(profile) ? current / "0\\Cache" : profile + "\\cache4";
      PutFile(hidden + "\\kept");
      PutFile(other + "\\taken");
      ::SetFileAttributesA(hidden.c_str(), attribute);
      CleanEverything();
      EXPECT_THAT(NamesBelow(hidden), ElementsAre("kept")) << hidden << ", attribute " << attribute;
      EXPECT_EQ(::GetFileAttributesA(hidden.c_str()), attribute | FILE_ATTRIBUTE_DIRECTORY) << hidden;
      EXPECT_THAT(NamesBelow(other), IsEmpty()) << other << " is not";
      ::SetFileAttributesA(hidden.c_str(), FILE_ATTRIBUTE_NORMAL);
      CleanEverything();
      EXPECT_THAT(NamesBelow(hidden), IsEmpty()) << hidden << " is so no longer";
    }
  }
}

TEST_P(Opera, IsCleanedByItsItemsInTheOlderLayoutAndThenInTheSeventh) {
  const struct {
    const char* item;
    Names deleted;
  } rows[] = {{"Ocookies", {current / "0\\cookies.dat", profile + "\\cookies4.dat"}},
              {"OClean", {current / "0\\Cache\\x", profile + "\\cache4\\x"}},
              {"OTypedUrl", {profile + "\\global.dat", profile + "\\opera.dir"}}};
  for (const auto& row : rows)
    for (const std::string& path : row.deleted) PutFile(path);
  for (const auto& row : rows) {
    const FileCalls calls;
    RunItem(row.item);
    EXPECT_EQ(calls.Deleted(), row.deleted);
  }
}

TEST_P(Opera, LosesArchivedFilesToo) {
  PutInProfile({"cache4\\x", "cookies4.dat"});
  for (const char* name : {"\\cache4\\x", "\\cookies4.dat"})
    ::SetFileAttributesA((profile + name).c_str(), FILE_ATTRIBUTE_ARCHIVE);
  CleanEverything();
  EXPECT_THAT(InProfile(), ElementsAre("cache4"));
}

TEST_P(Opera, LosesWhatStandsBesideFilesInUse) {
  PutInProfile({"cache4\\a", "cache4\\held", "cache4\\z", "cookies4.dat", "global.dat", "opera.dir"});
  const UniqueFile held = Hold(profile + "\\cache4\\held"), first = Hold(profile + "\\global.dat");
  ASSERT_TRUE(held && first);
  CleanEverything();
  EXPECT_THAT(InProfile(), UnorderedElementsAre("cache4", "cache4\\held", "global.dat"));
}

TEST_P(Opera, HasACacheFolderThatIsAFile) {
  PutInProfile({"cache4"});
  current.File("0\\Cache");
  CleanEverything();
  EXPECT_TRUE(IsThere(profile + "\\cache4"));
  EXPECT_TRUE(IsThere(current / "0\\Cache"));
}

TEST_P(Opera, LosesItsFilesWithoutOverwriting) {
  PutInProfile({"cookies4.dat", "cache4\\x"});
  GiveSecondName(profile + "\\cookies4.dat", current / "cookies");
  GiveSecondName(profile + "\\cache4\\x", current / "cache");
  WipePasses = 1;
  CleanEverything();
  WipePasses = 0;
  EXPECT_THAT(InProfile(), ElementsAre("cache4"));
  EXPECT_EQ(ReadWhole(current / "cookies") + ReadWhole(current / "cache"), "contentcontent");
}

TEST_P(Opera, LosesAThousandFilesOfItsCache) {
  for (int number = 0; number < 1000; ++number) PutFile(profile + "\\cache4\\opr" + std::to_string(number) + ".htm");
  CleanOpera7Cache();
  EXPECT_THAT(InProfile(), ElementsAre("cache4"));
}

TEST_P(Opera, LosesNoFurtherFileOfItsCacheAfterAStop) {
  PutInProfile({"cache4\\a", "cache4\\b", "cache4\\c"});
  const FileCalls calls;
  calls.AfterEachDeletion([&](const std::string&) {
    events.AtTheNext([] { StopErase = true; });
    LetTheNextLookBeDue();
  });
  CleanOpera7Cache();
  EXPECT_TRUE(StopErase) << "no event has run";
  EXPECT_EQ(calls.Deleted().size(), 1u);
  EXPECT_EQ(InProfile().size(), 3u);
}

TEST_P(Opera, LosesNamesOutsideTheCodePageAndKeepsLinks) {
  shell.Move(kApplicationDataFolder, Planted("names"));
  CleanEverything();
  EXPECT_EQ(NamesIn(Planted("names\\Opera\\OPERA7\\profile\\cache4")).size(), 2u);
}

TEST_P(Opera, IsReachedByWideNamesInAFolderOfApplicationDataOutsideTheCodePage) {
  shell.Move(kApplicationDataFolder, StrangeData());
  const std::wstring cookies = StrangeData() + L"\\Opera\\OPERA7\\profile\\cookies4.dat";
  ASSERT_NE(::GetFileAttributesW(cookies.c_str()), INVALID_FILE_ATTRIBUTES);
  CleanEverything();
  EXPECT_EQ(::GetFileAttributesW(cookies.c_str()) != INVALID_FILE_ATTRIBUTES, ByAnsi());
}

TEST_P(Opera, HasNoFolderOfApplicationDataThatTheAnsiFunctionsCannotName) {
  shell.Move(kApplicationDataFolder, StrangeData());
  EXPECT_EQ(GetSpecialFolder(kApplicationDataFolder), ByAnsi() ? Path() : FullPath(StrangeData()));
}

TEST_P(Opera, KeepsWhatACacheFolderThatIsALinkLeadsTo) {
  shell.Move(kApplicationDataFolder, Planted("link"));
  ::SetCurrentDirectoryA(Planted("current").c_str());
  ASSERT_TRUE(IsThere("0\\Cache\\canary.txt"));
  CleanEverything();
  EXPECT_TRUE(IsThere("0\\Cache\\canary.txt"));
  EXPECT_TRUE(IsThere(Planted("link\\Opera\\OPERA7\\profile\\cache4\\canary.txt")));
}

TEST_P(Opera, AsksTheShellForAFolder) {
  EXPECT_EQ(GetSpecialFolder(kApplicationDataFolder), At(data.Path()));
  EXPECT_EQ(GetSpecialFolder(kProfileFolder), FindSpecialFolder(kProfileFolder));
  shell.Move(kApplicationDataFolder, "D:\\");
  EXPECT_EQ(GetSpecialFolder(kApplicationDataFolder), At("D:\\"));
  shell.Forget(kApplicationDataFolder);
  EXPECT_EQ(GetSpecialFolder(kApplicationDataFolder), Path());
  shell.MakeNoFolderOfADisk(kApplicationDataFolder);
  EXPECT_EQ(GetSpecialFolder(kApplicationDataFolder), Path());
  for (const int unknown : {-1, 999, 0x7FFFFFFF}) EXPECT_EQ(GetSpecialFolder(unknown), Path()) << unknown;
}
