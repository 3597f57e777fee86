// The cleaners that delete registry keys: the typed addresses, the Run dialog's history, the AutoComplete passwords.
#include <gtest/gtest.h>

#include "cleaners/mdFHCCleaner.h"
#include "cleaners/value_sweep.h"
#include "connection.h"
#include "locked_key.h"
#include "log_recorder.h"
#include "nothing_pending.h"
#include "nothing_said.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "scratch_key.h"
#include "stop_at_change.h"

using namespace cleaners;
using namespace platform;

namespace {

using Names = std::vector<std::string>;

class IeRegistryTest : public NothingPending {
 protected:
  static void SetUpTestSuite() { GoOffline(); }
  void TearDown() override {
    NothingPending::TearDown();
    EXPECT_EQ(log.Lines(), LogLines()) << "the run writes the lines, not the cleaner";
  }

  LogRecorder log;
};

// The two cleaners that sweep a key before they delete it.
struct Sweeper {
  const char* name;
  void (*clean)();
  const char* path;

  friend std::ostream& operator<<(std::ostream& out, const Sweeper& sweeper) { return out << sweeper.name; }
};

class SweeperTest : public IeRegistryTest, public testing::WithParamInterface<Sweeper> {
 protected:
  static void Clean() { GetParam().clean(); }

  // Below the key: a key that holds what nobody may read cannot be deleted, and shows what the sweep does by itself.
  std::string Kept() const { return key.Path() + "\\kept"; }

  void Fill(int values = 4) const {
    for (int value = 1; value <= values; ++value)
      key.PutText("url" + std::to_string(value), "http://site.example/" + std::to_string(value));
  }

  ScratchKey key{GetParam().path};
};

INSTANTIATE_TEST_SUITE_P(Sweepers, SweeperTest,
                         testing::Values(Sweeper{"Command7", &Command7, "Software\\Microsoft\\Internet Explorer\\TypedURLs"},
                                         Sweeper{"ClearRunMRU", &ClearRunMRU,
                                                 "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU"}),
                         [](const testing::TestParamInfo<Sweeper>& tested) { return std::string(tested.param.name); });

class ValueSweepTest : public IeRegistryTest {
 protected:
  void Sweep() const { SweepValues(key.Open("", KEY_ALL_ACCESS).get(), ERROR_SUCCESS); }

  // In the order in which the system lists them.
  Names Left() const {
    const UniqueKey opened = key.Open("", KEY_READ);
    Names names;
    char name[1024];
    for (DWORD length = sizeof name; ::RegEnumValueA(opened.get(), static_cast<DWORD>(names.size()), name, &length, nullptr,
                                                     nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         length = sizeof name)
      names.push_back(name);
    return names;
  }

  void PutAll(const Names& names) const {
    for (const std::string& name : names) key.PutText(name, "text");
    ASSERT_EQ(Left(), names) << "the order that the system lists them in";
  }

  ScratchKey key{"Software\\QuellixTest\\Sweep"};
};

class ClearAutoCompletePasswordsTest : public IeRegistryTest {
 protected:
  ScratchKey forms{"Software\\Microsoft\\Internet Explorer\\IntelliForms"};
};

}  // namespace

// The sweep by itself

TEST_F(ValueSweepTest, DeletesTheFirstAndTheThirdOfFourValues) {
  PutAll({"url1", "url2", "url3", "url4"});
  Sweep();
  EXPECT_EQ(Left(), (Names{"url2", "url4"}));
}

TEST_F(ValueSweepTest, DeletesEverySecondValueOfAnyNumber) {
  PutAll({"a"});
  Sweep();
  EXPECT_EQ(Left(), Names());
  PutAll({"a", "b"});
  Sweep();
  EXPECT_EQ(Left(), Names{"b"});
  key.Remove();
  PutAll({"a", "b", "c", "d", "e"});
  Sweep();
  EXPECT_EQ(Left(), (Names{"b", "d"}));
}

TEST_F(ValueSweepTest, EndsAtOnceInAKeyWithoutValues) {
  key.Create("subkey");
  Sweep();
  EXPECT_TRUE(key.Exists("subkey"));
}

TEST_F(ValueSweepTest, DoesNothingWithAKeyThatDidNotOpen) {
  PutAll({"url1", "url2"});
  const UniqueKey opened = key.Open("", KEY_ALL_ACCESS);
  for (const LONG status : {2L, 5L, 87L}) SweepValues(opened.get(), status);
  SweepValues(nullptr, ERROR_FILE_NOT_FOUND);
  SweepValues(nullptr, ERROR_SUCCESS);
  EXPECT_EQ(Left(), (Names{"url1", "url2"}));
}

TEST_F(ValueSweepTest, LooksAtNoDataSoThatNoneIsTooLarge) {
  key.Put("a", REG_BINARY, std::string(100000, '\x7F'));
  key.Put("b", REG_MULTI_SZ, std::string("one\0two\0\0", 9));
  key.Put("c", REG_NONE, "");
  Sweep();
  EXPECT_EQ(Left(), Names{"b"});
}

TEST_F(ValueSweepTest, DeletesTheKeysOwnValueAndNamesWithAnyCharacter) {
  key.PutText("", "own");
  key.PutText(" blank at both ends ", "text");
  key.PutText("a\\b/c:*?\"<>|%\t", "text");
  key.PutText("\xE4\xF6\xFC", "text");
  for (int sweep = 0; sweep < 3; ++sweep) Sweep();
  EXPECT_EQ(Left(), Names());
}

TEST_F(ValueSweepTest, DeletesTheLongestNamesThatItsBufferHolds) {
  const std::string first(253, 'a'), second(254, 'b'), third(254, 'c');
  PutAll({first, second, third});
  Sweep();
  EXPECT_EQ(Left(), Names{second});
  Sweep();
  EXPECT_EQ(Left(), Names());
}

TEST_F(ValueSweepTest, EndsAtANameThatItsBufferDoesNotHold) {
  for (const std::size_t length : {255u, 256u, 300u, 1000u}) {
    key.Remove();
    PutAll({"a", "b", std::string(length, 'c'), "d"});
    Sweep();
    EXPECT_EQ(Left(), (Names{"b", std::string(length, 'c'), "d"})) << length;
  }
}

TEST_F(ValueSweepTest, EndsAtANameOutsideTheCodePage) {
  PutAll({"a", "b"});
  const UniqueKey opened = key.Open("", KEY_SET_VALUE);
  ::RegSetValueExW(opened.get(), L"\u4e2d\u6587", 0, REG_BINARY, nullptr, 0);
  key.PutText("\xFF", "after it");  // it cannot be named, so that it cannot be deleted either
  ASSERT_EQ(key.ValueCount(), 4u);
  Sweep();
  EXPECT_LE(key.ValueCount(), 3u);
  EXPECT_GE(key.ValueCount(), 2u);
}

TEST_F(ValueSweepTest, EndsAtAValueThatCannotBeDeleted) {
  PutAll({"url1", "url2"});
  SweepValues(key.Open("", KEY_READ).get(), ERROR_SUCCESS);
  EXPECT_EQ(Left(), (Names{"url1", "url2"}));
}

TEST_F(ValueSweepTest, DeletesNothingAfterAStop) {
  PutAll({"url1", "url2"});
  StopErase = true;
  Sweep();
  EXPECT_EQ(Left(), (Names{"url1", "url2"}));
}

TEST_F(ValueSweepTest, EndsWhenTheStopArrivesInIt) {
  for (int attempt = 0; attempt < 20 && key.ValueCount() <= 1000; ++attempt) {
    for (int value = 1; value <= 2000; ++value) key.PutText("url" + std::to_string(value), "text");
    StopErase = false;
    const StopAtTheFirstChange stop(key.Open("", KEY_NOTIFY));
    Sweep();
  }
  EXPECT_GT(key.ValueCount(), 1000u);
  EXPECT_LT(key.ValueCount(), 2000u);
}

// The typed addresses and the Run dialog's history

TEST_P(SweeperTest, DeletesTheKeyWithItsValuesAndSubkeys) {
  Fill(25);
  key.PutText("", "own");
  key.PutText("name", "text", "one\\two\\three");
  key.PutText("name", "text", "other");
  Clean();
  EXPECT_FALSE(key.Exists());
}

TEST_P(SweeperTest, DeletesEverySecondValueBeforeTheKey) {
  Fill();
  const LockedKey kept(Kept(), READ_CONTROL);
  Clean();
  ASSERT_TRUE(key.Exists());
  EXPECT_EQ(key.Text("url2"), "http://site.example/2");
  EXPECT_EQ(key.Text("url4"), "http://site.example/4");
  EXPECT_EQ(key.ValueCount(), 2u);
}

TEST_P(SweeperTest, DeletesAnEmptyKey) {
  key.Create();
  Clean();
  EXPECT_FALSE(key.Exists());
}

TEST_P(SweeperTest, TakesAMissingKeyAsItIs) {
  Clean();
  EXPECT_FALSE(key.Exists());
}

TEST_P(SweeperTest, DeletesTheKeyAlsoWhereTheSweepEndsEarly) {
  key.PutText("a", "text");
  key.PutText(std::string(300, 'b'), "text");
  const UniqueKey opened = key.Open("", KEY_SET_VALUE);
  ::RegSetValueExW(opened.get(), L"\u4e2d\u6587", 0, REG_BINARY, nullptr, 0);
  Clean();
  EXPECT_FALSE(key.Exists());
}

TEST_P(SweeperTest, DeletesTheKeyWithoutASweepAfterAStop) {
  Fill();
  StopErase = true;
  {
    const LockedKey kept(Kept(), READ_CONTROL);
    Clean();
    EXPECT_EQ(key.ValueCount(), 4u) << "the sweep ends at once";
  }
  Clean();
  EXPECT_FALSE(key.Exists());
}

TEST_P(SweeperTest, LeavesAKeyThatItMayNotChangeAndSaysNothing) {
  const NothingSaid nothing;
  Fill();
  const LockedKey kept(Kept(), READ_CONTROL);
  const LockedKey locked(key.Path());
  Clean();
  EXPECT_EQ(key.ValueCount(), 4u);
}

TEST_P(SweeperTest, CountsEveryTimeWhetherThereIsAKeyOrNot) {
  const std::int32_t before = ClearedKeyCount;
  Clean();
  EXPECT_EQ(ClearedKeyCount, before + 1);
  Fill();
  StopErase = true;
  Clean();
  EXPECT_EQ(ClearedKeyCount, before + 2) << "a stop is not looked at before the key is opened";
}

TEST_P(SweeperTest, RunsAgainWhileTheKeyOfTheRunBeforeIsHeldOpen) {
  std::vector<UniqueKey> held;
  for (int run = 0; run < 3; ++run) {
    Fill();
    held.push_back(key.Open("", KEY_READ));
    Clean();
    EXPECT_FALSE(key.Exists()) << "run " << run;
  }
}

TEST_P(SweeperTest, LeavesItsNeighboursAndTheMachinesKeyAlone) {
  ScratchKey longer(key.Path() + "Time");
  longer.PutText("name", "text");
  ScratchKey beside(key.Path().substr(0, key.Path().rfind('\\')) + "\\QuellixTest");
  beside.PutText("url1", "text");
  HKEY created = nullptr;
  ::RegCreateKeyA(HKEY_LOCAL_MACHINE, key.Path().c_str(), &created);
  const UniqueKey machine(created);
  Fill();
  Clean();
  EXPECT_EQ(longer.Text("name"), "text");
  EXPECT_EQ(beside.Text("url1"), "text");
  HKEY opened = nullptr;
  EXPECT_EQ(::RegOpenKeyA(HKEY_LOCAL_MACHINE, key.Path().c_str(), &opened), ERROR_SUCCESS);
  const UniqueKey close(opened);
  ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, key.Path().c_str());
}

// The AutoComplete passwords

TEST_F(ClearAutoCompletePasswordsTest, DeletesTheKeyWithItsSubkeys) {
  forms.PutText("AskUser", "1");
  for (const char* subkey : {"SPW", "Storage1", "Storage2", "one\\two\\three"}) forms.PutText("name", "text", subkey);
  ClearAutoCompletePasswords();
  EXPECT_FALSE(forms.Exists());
}

TEST_F(ClearAutoCompletePasswordsTest, TakesAMissingKeyAsItIs) {
  ClearAutoCompletePasswords();
  EXPECT_FALSE(forms.Exists());
}

TEST_F(ClearAutoCompletePasswordsTest, SaysNothingOfAKeyThatItMayNotDelete) {
  const NothingSaid nothing;
  forms.PutText("name", "text");
  const LockedKey kept(forms.Path() + "\\kept", READ_CONTROL);
  ClearAutoCompletePasswords();
  EXPECT_EQ(forms.Text("name"), "text");
}

TEST_F(ClearAutoCompletePasswordsTest, DoesNothingAfterAStop) {
  forms.PutText("name", "text", "SPW");
  StopErase = true;
  const std::int32_t before = ClearedKeyCount;
  ClearAutoCompletePasswords();
  EXPECT_EQ(forms.Text("name", "SPW"), "text");
  EXPECT_EQ(ClearedKeyCount, before);
}

TEST_F(ClearAutoCompletePasswordsTest, CountsEveryTimeWhetherThereIsAKeyOrNot) {
  const std::int32_t before = ClearedKeyCount;
  ClearAutoCompletePasswords();
  forms.Create();
  ClearAutoCompletePasswords();
  EXPECT_EQ(ClearedKeyCount, before + 2);
}

TEST_F(ClearAutoCompletePasswordsTest, LeavesItsNeighboursAlone) {
  ScratchKey main("Software\\Microsoft\\Internet Explorer\\IntelliForms2");
  main.PutText("name", "text");
  ScratchKey typed("Software\\Microsoft\\Internet Explorer\\TypedURLs");
  typed.PutText("url1", "http://site.example/");
  forms.Create("SPW");
  ClearAutoCompletePasswords();
  EXPECT_EQ(main.Text("name"), "text");
  EXPECT_EQ(typed.Text("url1"), "http://site.example/");
}
