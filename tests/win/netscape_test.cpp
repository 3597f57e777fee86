// The cleaners of Netscape and Mozilla on profiles as those programs lay them out, by wide names and by ANSI names: where a
// profile is looked for, what goes of it and what stays. Links and what is in odd folders: netscape_walks_test.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "ansi_paths.h"
#include "exchange_on_deletion.h"
#include "file_calls.h"
#include "log_recorder.h"
#include "netscape_profiles.h"
#include "nothing_pending.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "run_item.h"
#include "scratch_key.h"
#include "shell_folders.h"
#include "window_event.h"

using namespace cleaners;
using namespace erase;
using namespace platform;

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::string kUsers = "Netscape Navigator\\Users";
const std::string kBiff = "Netscape Navigator\\biff";
const std::string kMain = "Netscape Navigator\\Main";

class Netscape : public ByEitherNames {
 protected:
  static void SetUpTestSuite() { PutCanaries(); }

  void SetUp() override {
    ByEitherNames::SetUp();
    ::SetCurrentDirectoryA("C:\\test\\current");
  }

  void TearDown() override {
    ByEitherNames::TearDown();
    EXPECT_THAT(MissingCanaries(), IsEmpty());
    PutCanaries();
    EXPECT_EQ(log.Lines(), LogLines()) << "the run writes the lines, not the cleaner";
  }

  void RegisterCommunicator(const std::string& user, const std::string& dirRoot) const {
    netscape.PutText("CurrentUser", user, kUsers);
    netscape.PutText("DirRoot", dirRoot, kUsers + "\\" + user);
  }

  void RegisterNetscape6(const std::string& user, const std::string& install) const {
    netscape.PutText("CurrentUser", user, kBiff);
    netscape.PutText("Install Directory", install, kMain);
  }

  // Nothing of the scratch folder and no canary.
  void ExpectNothingTaken(const std::string& why) const {
    const Names before = NamesBelow(folder.Path());
    for (const TestedCleaner& cleaner : kCleaners) {
      cleaner.clean();
      EXPECT_EQ(NamesBelow(folder.Path()), before) << cleaner.name << ": " << why.substr(0, 100);
      EXPECT_THAT(MissingCanaries(), IsEmpty()) << cleaner.name << ": " << why.substr(0, 100);
    }
  }

  const ShellFolders shell;
  const ScratchFolder folder;
  const ScratchFolder mozilla{TextOf(FindSpecialFolder(kProfileFolder)) + "\\Application Data\\Mozilla\\Profiles"};
  const ScratchKey netscape{"Software\\Netscape", HKEY_LOCAL_MACHINE};
  const std::string communicator = folder / "four";
  const std::string netscape6 = folder / "Users\\joe";
  const LogRecorder log;
  const WindowEvents events;
};

INSTANTIATE_TEST_SUITE_P(Names, Netscape, testing::ValuesIn(WaysOfNames()), NameOfWay);

}  // namespace

TEST_P(Netscape, TakesTheTargetsOfEachCleanerFromTheProfileOfCommunicatorAndNothingElse) {
  RegisterCommunicator("joe", communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(communicator);
    cleaner.clean();
    EXPECT_EQ(FilesBelow(communicator), RegisteredBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, TakesTheTargetsOfEachCleanerFromTheProfileOfNetscape6AndNothingElse) {
  RegisterNetscape6("joe", folder / "Communicator");
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(netscape6);
    cleaner.clean();
    EXPECT_EQ(FilesBelow(netscape6), RegisteredBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, FindsTheTargetsOfEachCleanerAtAnyDepthBelowMozillasFolderInAnyCaseAndTakesNothingElse) {
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutMozilla(mozilla.Path());
    cleaner.clean();
    EXPECT_EQ(FilesBelow(mozilla.Path()), MozillaBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, IsCleanedByItsItems) {
  RegisterCommunicator("joe", communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(communicator);
    RunItem(cleaner.item);
    EXPECT_EQ(FilesBelow(communicator), RegisteredBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, TakesTheTargetsFromAllThreeInOneRun) {
  RegisterCommunicator("joe", communicator);
  RegisterNetscape6("joe", folder / "Communicator");
  for (const TestedCleaner& cleaner : kCleaners) {
    for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
    LayOutMozilla(mozilla.Path());
    cleaner.clean();
    EXPECT_EQ(FilesBelow(communicator), RegisteredBut(cleaner)) << cleaner.name;
    EXPECT_EQ(FilesBelow(netscape6), RegisteredBut(cleaner)) << cleaner.name;
    EXPECT_EQ(FilesBelow(mozilla.Path()), MozillaBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, TakesCommunicatorThenNetscape6ThenMozilla) {
  RegisterCommunicator("joe", communicator);
  RegisterNetscape6("joe", folder / "Communicator");
  for (const TestedCleaner& cleaner : kCleaners) {
    for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
    LayOutMozilla(mozilla.Path());
    const FileCalls calls;
    cleaner.clean();
    Names deleted = calls.Deleted();
    const std::size_t each = cleaner.ofRegistered.size();
    ASSERT_EQ(deleted.size(), 2 * each + cleaner.ofMozilla.size()) << cleaner.name;
    for (std::size_t index = 0; index < deleted.size(); ++index) {
      const std::string& place = index < each ? communicator : index < 2 * each ? netscape6 : mozilla.Path();
      EXPECT_TRUE(deleted[index].starts_with(place + "\\")) << cleaner.name << ": " << index << ". " << deleted[index];
    }
  }
}

// It occurs in the list's text, in "SchemaValue.tbl", which is enough. Of a registered profile the names are exact.
TEST_P(Netscape, TakesAFileOfMozillasProfilesThatIsNamedValueTbl) {
  RegisterCommunicator("joe", communicator);
  PutFile(communicator + "\\Value.tbl");
  PutFile(mozilla / "joe\\abc.slt\\Value.tbl");
  PutFile(mozilla / "joe\\abc.slt\\MyValue.tbl");
  NSTypedUrl();
  EXPECT_THAT(FilesBelow(mozilla.Path()), ElementsAre("joe\\abc.slt\\MyValue.tbl"));
  EXPECT_THAT(FilesBelow(communicator), ElementsAre("Value.tbl"));
}

// The first table is in the list a second time, to no effect.
TEST_P(Netscape, TriesTheTablesInTheirOrderAndTheFirstTwice) {
  RegisterCommunicator("joe", communicator);
  LayOutRegistered(communicator);
  const FileCalls calls;
  NSTypedUrl();
  Names looked = calls.LookedAt();
  std::erase_if(looked,
                [this](const std::string& path) { return !path.starts_with(folder.Path()) && path != mozilla.Path(); });
  std::erase(looked, communicator);  // judged, and entered for each of them
  looked.erase(std::unique(looked.begin(), looked.end()), looked.end());
  EXPECT_THAT(looked, ElementsAre(mozilla.Path(), communicator + "\\FieldSchema.tbl", communicator + "\\SchemaConcat.tbl",
                                  communicator + "\\SchemaValue.tbl", communicator + "\\FieldSchema.tbl",
                                  communicator + "\\URLFieldSchema.tbl"))
      << "everything is found before the first is taken";
  EXPECT_EQ(calls.Deleted().size(), 4u) << "the second attempt finds no file";
}

TEST_P(Netscape, TakesTheFirstTableWithTheSecondAttemptWhenItHasComeBack) {
  RegisterCommunicator("joe", communicator);
  LayOutRegistered(communicator);
  const FileCalls calls;
  calls.AfterEachDeletion([&](const std::string& path) {
    if (path.ends_with("SchemaValue.tbl")) PutFile(communicator + "\\FieldSchema.tbl");
  });
  NSTypedUrl();
  EXPECT_FALSE(IsThere(communicator + "\\FieldSchema.tbl"));
}

// The preparation has laid out the profile and what the link leads to.
TEST_P(Netscape, TakesNothingThroughALinkThatTookAFoldersPlaceAfterItWasSearched) {
  const std::string place = "C:\\swap\\" + std::string(GetParam());
  shell.Move(kProfileFolder, place);
  {
    const FileCalls calls;
    ExchangeAfterTheFirstDeletion(calls, events, place);
    CleanNetscapeMail();
    EXPECT_EQ(calls.Deleted().size(), 1u);
  }
  EXPECT_EQ(FilesBelow("C:\\outside\\" + std::string(GetParam())).size(), 20u);
}

TEST_P(Netscape, TakesNothingWhenNothingIsInstalled) {
  PutFile(folder / "FieldSchema.tbl");
  ExpectNothingTaken("nothing is registered");
  EXPECT_THAT(NamesBelow(mozilla.Path()), IsEmpty());
}

TEST_P(Netscape, TakesNothingAfterAStop) {
  RegisterCommunicator("joe", communicator);
  RegisterNetscape6("joe", folder / "Communicator");
  for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
  LayOutMozilla(mozilla.Path());
  const Names before = NamesBelow(mozilla.Path());
  StopErase = true;
  ExpectNothingTaken("a stop is asked for");
  EXPECT_EQ(NamesBelow(mozilla.Path()), before);
}

// Only the cache cleaner collects of Communicator whatever the stop request is.
TEST_P(Netscape, AfterAStopDoesNotEvenCollectTheTypedAddressesAndTheMailOfCommunicator) {
  RegisterCommunicator("joe", communicator);
  LayOutRegistered(communicator);
  StopErase = true;
  for (const TestedCleaner& cleaner : kCleaners) {
    const FileCalls calls;
    cleaner.clean();
    const Names lookedAt = calls.LookedAt();
    if (cleaner.clean == &CleanNescapeCache) {
      EXPECT_THAT(lookedAt, Contains(communicator)) << cleaner.name;
    } else {
      EXPECT_THAT(lookedAt, Not(Contains(communicator))) << cleaner.name;
    }
    EXPECT_THAT(calls.Deleted(), IsEmpty()) << cleaner.name;
  }
}

TEST_P(Netscape, LetsEventsRunBeforeItBeginsAndTakesNothingAfterAStopThatComesThen) {
  RegisterCommunicator("joe", communicator);
  LayOutRegistered(communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    StopErase = false;
    events.AtTheNext([] { StopErase = true; });
    cleaner.clean();
    EXPECT_TRUE(events.HasRun()) << cleaner.name;
    EXPECT_EQ(FilesBelow(communicator).size(), AllOf(kKeptOfRegistered, &TestedCleaner::ofRegistered).size())
        << cleaner.name;
  }
}

TEST_P(Netscape, TakesNoFurtherFileAfterAStopInTheMiddle) {
  RegisterCommunicator("joe", communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(communicator);
    StopErase = false;
    const FileCalls calls;
    std::size_t looks = 0;
    calls.AfterEachDeletion([&](const std::string&) {
      looks = calls.LookedAt().size();
      LetTheNextLookBeDue();
      events.AtTheNext([] { StopErase = true; });
    });
    cleaner.clean();
    EXPECT_EQ(calls.LookedAt().size(), looks) << cleaner.name << " looks for further ones";
    EXPECT_EQ(calls.Deleted().size(), 1u) << cleaner.name;
    EXPECT_EQ(FilesBelow(communicator).size(), AllOf(kKeptOfRegistered, &TestedCleaner::ofRegistered).size() - 1)
        << cleaner.name;
  }
}

TEST_P(Netscape, TakesAProfileFolderWithABackslashBehindIt) {
  for (const TestedCleaner& cleaner : kCleaners) {
    for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
    RegisterCommunicator("joe", communicator + "\\");
    RegisterNetscape6("joe", folder / "Communicator\\");
    cleaner.clean();
    EXPECT_EQ(FilesBelow(communicator), RegisteredBut(cleaner)) << cleaner.name;
    EXPECT_EQ(FilesBelow(netscape6), RegisteredBut(cleaner)) << cleaner.name;
  }
}

TEST_P(Netscape, LooksForCommunicatorsUserWithoutBlanksAndForNetscape6sWithThem) {
  netscape.PutText("CurrentUser", "  joe ", kUsers);
  netscape.PutText("DirRoot", communicator, kUsers + "\\joe");
  RegisterNetscape6(" joe", folder / "Communicator");
  LayOutRegistered(communicator);
  LayOutRegistered(netscape6);
  LayOutRegistered(folder / "Users\\ joe");
  NSTypedUrl();
  EXPECT_EQ(FilesBelow(communicator), RegisteredBut(kCleaners[0]));
  EXPECT_EQ(FilesBelow(folder / "Users\\ joe"), RegisteredBut(kCleaners[0]));
  EXPECT_TRUE(IsThere(netscape6 + "\\FieldSchema.tbl"));
}

TEST_P(Netscape, PutsTheUserInThePlaceOfEveryCommunicatorInTheInstallDirectory) {
  const struct {
    std::string install, user, profile;
  } rows[] = {
      {"Communicator\\Program", "joe", "Users\\joe\\Program"},
      {"Communicator\\Communicator", "joe", "Users\\joe\\Users\\joe"},
      {"Communicator", "Communicator", "Users\\Communicator"},
      {"communicator", "joe", "communicator"},
      {"Netscape 7", "joe", "Netscape 7"},  // nothing to replace: the install directory itself
  };
  for (const auto& row : rows) {
    const ScratchFolder place("C:\\test\\replaced");
    for (const TestedCleaner& cleaner : kCleaners) {
      LayOutRegistered(place / row.profile);
      RegisterNetscape6(row.user, place / row.install);
      cleaner.clean();
      EXPECT_EQ(FilesBelow(place / row.profile), RegisteredBut(cleaner)) << row.install << ", " << cleaner.name;
    }
  }
}

TEST_P(Netscape, TakesNothingOfAFolderToKeepThatIsRegisteredAsAProfile) {
  const std::string profile = std::getenv("USERPROFILE");
  for (const std::string& place :
       {std::string("C:\\"), std::string("C:\\windows"), std::string("C:\\WINDOWS\\system32\\"),
        std::string("C:\\windows\\temp\\.."), std::string("C:\\Program Files"),
        std::string("C:\\Program Files\\Common Files"), std::string("C:\\test"), std::string("C:\\users"), profile,
        profile + "\\", profile + "\\Desktop", profile + "\\Favorites"}) {
    const Names canaries = {place + "\\FieldSchema.tbl", place + "\\mail\\trash", place + "\\cache\\x"};
    for (const std::string& canary : canaries) PutFile(canary);
    RegisterCommunicator("joe", place);
    RegisterNetscape6("joe", place);  // no "Communicator" in it: the profile is the install directory itself
    ExpectNothingTaken(place);
    for (const std::string& canary : canaries) EXPECT_TRUE(IsThere(canary)) << canary;
  }
}

TEST_P(Netscape, IsNotLedOutOfTheUsersFolderByAUsersName) {
  for (const char* profile : {"Users\\joe", "Users", "other", "."}) LayOutRegistered(folder / profile);
  for (const std::string user : {"..",
                                 ".",
                                 "...",
                                 " ",
                                 "   ",
                                 ".. ",
                                 " ..",
                                 ". .",
                                 "..\\",
                                 "\\..",
                                 "..\\other",
                                 "../other",
                                 "..\\..\\current",
                                 "joe\\..",
                                 "joe\\..\\..\\other",
                                 "joe\\",
                                 "\\",
                                 "/",
                                 "C:",
                                 "C:\\test\\scratch\\other",
                                 "*",
                                 "jo?",
                                 "joe\"",
                                 "|"}) {
    RegisterNetscape6(user, folder / "Communicator");
    ExpectNothingTaken(user);
  }
}

// It names a key below that of the users, and one without a name would be that key itself.
TEST_P(Netscape, IsNotLedOutOfTheKeyOfTheUsersByACommunicatorUsersName) {
  LayOutRegistered(communicator);
  for (const std::string user : {"..\\other", "a\\b", "", "  "}) {
    netscape.Remove();
    netscape.PutText("CurrentUser", user, kUsers);
    for (const std::string& key : {kUsers, kUsers + "\\" + user, std::string("Netscape Navigator\\other")})
      netscape.PutText("DirRoot", communicator, key);
    ExpectNothingTaken('"' + user + '"');
  }
}

TEST_P(Netscape, TakesNothingOfAFolderThatIsNoFullPath) {
  LayOutRegistered(folder / "profile");
  PutFile(folder / "file.txt");
  for (const std::string path : {"",
                                 " ",
                                 "\\",
                                 "/",
                                 ".",
                                 "..",
                                 "...",
                                 "profile",
                                 "profile\\",
                                 ".\\profile",
                                 "..\\scratch\\profile",
                                 "C:",
                                 "C:.",
                                 "C:profile",
                                 "\\test\\scratch\\profile",
                                 "C:/test/scratch/profile",
                                 "C:\\...",
                                 "C:\\test\\...",
                                 "C:\\test\\scratch\\...\\profile",
                                 "\\\\?\\C:\\test\\scratch\\profile",
                                 "\\\\.\\C:\\test\\scratch\\profile",
                                 "C:\\test\\scratch\\*",
                                 "C:\\test\\*\\profile",
                                 "C:\\test\\scratch\\profil?",
                                 "\"C:\\test\\scratch\\profile\"",
                                 " C:\\test\\scratch\\profile",
                                 "%HOMEDRIVE%\\test\\scratch\\profile",
                                 "C:\\missing",
                                 "Q:\\profile",
                                 "\\\\",
                                 "\\\\server",
                                 "\\\\missing\\share",
                                 "C:\\test\\scratch\\file.txt",
                                 "\xFF\xFE\x01"}) {
    RegisterCommunicator("joe", path);
    RegisterNetscape6("joe", path);
    ExpectNothingTaken(path);
  }
}

TEST_P(Netscape, TakesNothingWhenAValueIsMissingOrNoText) {
  for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
  const struct {
    std::string key, value, text;
  } rows[] = {{kUsers, "CurrentUser", "joe"},
              {kUsers + "\\joe", "DirRoot", communicator},
              {kBiff, "CurrentUser", "joe"},
              {kMain, "Install Directory", folder / "Communicator"}};
  for (std::size_t other = 0; other < 4; ++other) {
    for (const DWORD type : {REG_NONE, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ}) {
      netscape.Remove();
      netscape.PutText(rows[other ^ 1].value, rows[other ^ 1].text, rows[other ^ 1].key);  // its partner
      ExpectNothingTaken(rows[other].key + " has no " + rows[other].value);
      netscape.Put(rows[other].value, type, rows[other].text + '\0', rows[other].key);
      ExpectNothingTaken(rows[other].key + ", " + rows[other].value + ", type " + std::to_string(type));
    }
  }
}

TEST_P(Netscape, ReadsAValueUpToItsFirstZeroOrToItsEnd) {
  const std::string rest("\0\\..\\other", 10);
  for (const std::string& end : {rest, std::string()}) {
    netscape.Put("CurrentUser", REG_SZ, "joe" + end, kUsers);
    netscape.Put("DirRoot", REG_SZ, communicator + end, kUsers + "\\joe");
    netscape.Put("CurrentUser", REG_SZ, "joe" + end, kBiff);
    netscape.Put("Install Directory", REG_SZ, (folder / "Communicator") + end, kMain);
    for (const TestedCleaner& cleaner : kCleaners) {
      for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
      cleaner.clean();
      EXPECT_EQ(FilesBelow(communicator), RegisteredBut(cleaner)) << cleaner.name;
      EXPECT_EQ(FilesBelow(netscape6), RegisteredBut(cleaner)) << cleaner.name;
    }
  }
  netscape.Put("DirRoot", REG_SZ, std::string("\0", 1) + communicator, kUsers + "\\joe");
  netscape.Put("CurrentUser", REG_SZ, std::string("\0joe", 4), kBiff);
  for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
  ExpectNothingTaken("nothing before the zero");
}

TEST_P(Netscape, TakesNothingOfValuesOf10000Characters) {
  const std::string x(10000, 'x');
  for (const std::string& profile : {communicator, netscape6}) LayOutRegistered(profile);
  RegisterCommunicator("joe", communicator + "\\" + x);
  RegisterNetscape6(x, folder / "Communicator");
  ExpectNothingTaken("a long folder and a long user");
  netscape.PutText("CurrentUser", x, kUsers);
  RegisterNetscape6("joe", (folder / "Communicator\\") + x);
  ExpectNothingTaken("a long user and a long install directory");
}

TEST_P(Netscape, GoesOnPastFilesThatAreInUse) {
  RegisterCommunicator("joe", communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(communicator);
    const std::string kept = communicator + "\\" + cleaner.ofRegistered[0];
    {
      const UniqueFile holder(
          ::CreateFileA(kept.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
      ASSERT_TRUE(holder);
      cleaner.clean();
    }
    EXPECT_EQ(FilesBelow(communicator), With(cleaner.ofRegistered[0], RegisteredBut(cleaner))) << cleaner.name;
  }
}

TEST_P(Netscape, LeavesReadOnlyFilesAndTakesHiddenOnesOfTheSystem) {
  RegisterCommunicator("joe", communicator);
  for (const TestedCleaner& cleaner : kCleaners) {
    LayOutRegistered(communicator);
    for (std::size_t index = 0; index < cleaner.ofRegistered.size(); ++index)
      ::SetFileAttributesA((communicator + "\\" + cleaner.ofRegistered[index]).c_str(),
                           index == 0 ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    cleaner.clean();
    EXPECT_EQ(FilesBelow(communicator), With(cleaner.ofRegistered[0], RegisteredBut(cleaner))) << cleaner.name;
    ::SetFileAttributesA((communicator + "\\" + cleaner.ofRegistered[0]).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

TEST_P(Netscape, EmptiesTheCacheFoldersWithTheirSubfoldersAndKeepsThem) {
  RegisterCommunicator("joe", communicator);
  LayOutRegistered(communicator);
  LayOutMozilla(mozilla.Path());
  ::CreateDirectoryA((communicator + "\\cache\\empty").c_str(), nullptr);
  CleanNescapeCache();
  for (const std::string& cache : {communicator + "\\cache", mozilla / "Cache", mozilla / "joe\\abc.slt\\Cache",
                                   mozilla / "joe\\abc.slt\\a\\b\\c\\CACHE"}) {
    EXPECT_TRUE(IsThere(cache)) << cache;
    EXPECT_THAT(NamesBelow(cache), IsEmpty()) << cache;
  }
}

TEST_P(Netscape, LooksForTheRegisteredCacheFolderAndForNoFileOfThatName) {
  RegisterCommunicator("joe", communicator);
  PutFile(communicator + "\\cache");
  CleanNescapeCache();
  EXPECT_TRUE(IsThere(communicator + "\\cache"));
}

TEST_P(Netscape, LooksForMozillaInTheFolderOfApplicationDataOnlyWhenThereIsNoProfileFolder) {
  shell.Move(kApplicationDataFolder, folder / "data");
  for (const bool known : {true, false}) {
    if (!known) shell.Forget(kProfileFolder);
    for (const TestedCleaner& cleaner : kCleaners) {
      LayOutMozilla(mozilla.Path());
      LayOutMozilla(folder / "data\\Mozilla\\Profiles");
      cleaner.clean();
      EXPECT_EQ(FilesBelow(known ? mozilla.Path() : folder / "data\\Mozilla\\Profiles"), MozillaBut(cleaner));
      EXPECT_EQ(FilesBelow(known ? folder / "data\\Mozilla\\Profiles" : mozilla.Path()).size(),
                AllOf(kKeptOfMozilla, &TestedCleaner::ofMozilla).size());
    }
  }
}

TEST_P(Netscape, LooksForMozillaNowhereWhenTheSystemKnowsNeitherFolderOrNoFullPath) {
  LayOutMozilla(mozilla.Path());
  const Names before = NamesBelow(mozilla.Path());
  for (const int identifier : {kProfileFolder, kApplicationDataFolder}) shell.Forget(identifier);
  ExpectNothingTaken("neither is known");
  for (const int identifier : {kProfileFolder, kApplicationDataFolder}) shell.MakeNoFolderOfADisk(identifier);
  ExpectNothingTaken("neither is on a disk");
  for (const char* place : {".", "profile", "\\test\\current", "..\\current"}) {
    for (const int identifier : {kProfileFolder, kApplicationDataFolder}) shell.Move(identifier, place);
    ExpectNothingTaken(place);
  }
  EXPECT_EQ(NamesBelow(mozilla.Path()), before);
}

TEST_P(Netscape, TakesAProfileFolderOfTheShellWithABackslashBehindIt) {
  shell.Move(kProfileFolder, folder.Path() + "\\");
  LayOutMozilla(folder / "Application Data\\Mozilla\\Profiles");
  CleanNescapeCache();
  EXPECT_EQ(FilesBelow(folder / "Application Data\\Mozilla\\Profiles"), MozillaBut(kCleaners[2]));
}
