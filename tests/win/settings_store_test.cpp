#include "settings/settings_store.h"

#include <gtest/gtest.h>

#include "locked_key.h"
#include "platform/app_title.h"
#include "platform/runtime_error.h"
#include "scratch_key.h"

using namespace platform;
using namespace settings;

namespace {

class SettingsStore : public testing::Test {
 protected:
  void TearDown() override { AppTitle = QUELLIX_PRODUCT_NAME; }

  // The number of the error that saving raises, 0 for none.
  static int SavingRaises(Setting setting, const std::string& value) {
    try {
      SaveSetting(setting, value);
    } catch (const RuntimeError& error) {
      return error.number;
    }
    return 0;
  }

  ScratchKey store{"Software\\Quellix"};
};

const std::string kScheduling = "Quellix\\Scheduling";

}  // namespace

TEST_F(SettingsStore, KeepsAValueUnderApplicationTitleAndSection) {
  for (const SettingRow& row : kSchema) {
    SaveSetting(row.setting, std::string("text of ") + row.key);
    EXPECT_EQ(store.Value(row.key, std::string("Quellix\\") + row.section),
              (RegistryValue{REG_SZ, std::string("text of ") + row.key + '\0'}))
        << row.section << '\\' << row.key;
  }
  EXPECT_EQ(store.ValueCount(), 0u);
  EXPECT_EQ(store.ValueCount("Quellix"), 0u);
}

TEST_F(SettingsStore, GivesBackWhatWasSaved) {
  const std::string texts[] = {"0", "1", "", " ", "  9:00 AM ", "\t\r\n", "\xE4\xF6\xFC\xDF", std::string(10000, 'x')};
  for (const std::string& text : texts) {
    SaveSetting(Setting::ScheduledTime, text);
    EXPECT_TRUE(GetSetting(Setting::ScheduledTime) == text) << text.substr(0, 40);
  }
}

TEST_F(SettingsStore, HasTheDefaultOfEverySettingWhenEmpty) {
  ASSERT_FALSE(store.Exists());
  for (const SettingRow& row : kSchema) EXPECT_EQ(GetSetting(row.setting), row.defaultText) << row.key;
  EXPECT_FALSE(store.Exists()) << "reading makes no key";
}

TEST_F(SettingsStore, HasTheDefaultForAMissingValueInAnExistingSection) {
  store.PutText("chkRbt", "1", kScheduling);
  EXPECT_EQ(GetSetting(Setting::ScheduleMin), "60");
}

TEST_F(SettingsStore, HasTheDefaultForAValueThatIsNoText) {
  for (const DWORD type : {REG_NONE, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, 11}) {
    store.Put("ScheduleMin", type, std::string("5\0\0\0\0\0\0\0", 8), kScheduling);
    EXPECT_EQ(GetSetting(Setting::ScheduleMin), "60") << "type " << type;
  }
}

TEST_F(SettingsStore, ReadsAnEmptyTextAsEmptyAndNotAsMissing) {
  store.PutText("ScheduleMin", "", kScheduling);
  EXPECT_EQ(GetSetting(Setting::ScheduleMin), "");
}

TEST_F(SettingsStore, ReadsUpToTheFirstZero) {
  store.Put("ScheduleMin", REG_SZ,
            std::string("15\0"
                        "99\0",
                        6),
            kScheduling);
  EXPECT_EQ(GetSetting(Setting::ScheduleMin), "15");
}

TEST_F(SettingsStore, ReadsATextWithoutATerminatingZeroWhole) {
  // Windows 9x ends every text itself, so the value cannot be made there; the settings of the NT family run this.
  if (EndsEveryText()) GTEST_SKIP() << "this Windows has no such value";
  store.Put("ScheduleMin", REG_SZ, "15", kScheduling);
  ASSERT_EQ(store.Value("ScheduleMin", kScheduling), (RegistryValue{REG_SZ, "15"}));
  EXPECT_EQ(GetSetting(Setting::ScheduleMin), "15");
  store.Put("ScheduleMin", REG_SZ, "", kScheduling);
  EXPECT_EQ(GetSetting(Setting::ScheduleMin), "");
}

TEST_F(SettingsStore, DoesNotLookIntoOtherSections) {
  store.PutText("Startup", "1", kScheduling);
  store.PutText("Startup", "1", "Quellix");
  EXPECT_EQ(GetSetting(Setting::Startup), "0");
}

TEST_F(SettingsStore, ReplacesAValueOfAnotherType) {
  store.Put("ScheduleMin", REG_DWORD, std::string("\5\0\0\0", 4), kScheduling);
  SaveSetting(Setting::ScheduleMin, "15");
  EXPECT_EQ(store.Text("ScheduleMin", kScheduling), "15");
}

TEST_F(SettingsStore, FollowsTheApplicationTitleAsItStands) {
  SaveSetting(Setting::txtLevel, "1");
  AppTitle = "Program already runnning - This App Will Be Closed";
  EXPECT_EQ(GetSetting(Setting::txtLevel), "50");
  SaveSetting(Setting::txtLevel, "2");
  EXPECT_EQ(store.Text("txtLevel", "Program already runnning - This App Will Be Closed\\Shredder"), "2");
  AppTitle = QUELLIX_PRODUCT_NAME;
  EXPECT_EQ(GetSetting(Setting::txtLevel), "1");
}

TEST_F(SettingsStore, ComesBackAfterItsKeyWasDeletedMeanwhile) {
  SaveSetting(Setting::txtLevel, "1");
  store.Remove();
  EXPECT_EQ(GetSetting(Setting::txtLevel), "50");
  SaveSetting(Setting::txtLevel, "2");
  EXPECT_EQ(GetSetting(Setting::txtLevel), "2");
}

TEST_F(SettingsStore, RaisesWhenItsKeyCannotBeMade) {
  store.Create("", REG_OPTION_VOLATILE);  // which can hold no lasting key
  EXPECT_NE(SavingRaises(Setting::txtLevel, "1"), 0);
  EXPECT_FALSE(store.Exists("Quellix"));
  EXPECT_EQ(GetSetting(Setting::txtLevel), "50");
}

TEST_F(SettingsStore, RaisesPermissionDeniedAndKeepsTheValueWhenItsKeyMayNotBeWritten) {
  SaveSetting(Setting::txtLevel, "1");
  const LockedKey lock("Software\\Quellix\\Quellix\\Shredder");
  EXPECT_EQ(SavingRaises(Setting::txtLevel, "2"), kPermissionDenied);
  EXPECT_EQ(GetSetting(Setting::txtLevel), "1");
}
