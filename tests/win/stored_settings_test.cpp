#include "settings/stored_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "locked_key.h"
#include "platform/runtime_error.h"
#include "scratch_key.h"
#include "settings/settings_coupling.h"
#include "settings/settings_store.h"

using namespace platform;
using namespace settings;

namespace {

// What the panels put into the variables before they are written.
struct ControlTexts {
  const char* txtMinutes;
  const char* pickerMinute;
  const char* pickerHour;
  const char* pickerSecond;
  const char* chkOptions;
  const char* txtLevel;

  void Keep() const {
    CopyScheduleTexts(Settings, txtMinutes, {pickerMinute, pickerHour, pickerSecond});
    Settings[Setting::chkOptions] = chkOptions;
    Settings[Setting::txtLevel] = txtLevel;
  }
};

// The settings that are saved, in their order.
std::vector<Setting> SaveOrder() {
  std::vector<Setting> order;
  for (const SettingRow& row : kSchema)
    if (row.saved == Saved::Yes) order.push_back(row.setting);
  return order;
}

class StoredSettings : public testing::Test {
 protected:
  void SetUp() override {
    Settings = SettingsVariables();
    Err.Clear();
  }

  // Two items, enough to see their order and that they go before everything else.
  std::string flags[2];
  const ItemFlag items[2] = {{"FirstItem", &flags[0]}, {"SecondItem", &flags[1]}};
  static constexpr char kItemsKey[] = "Quellix\\CleanSettings";

  void Read() { ReadStoredSettings(items); }
  void Write(const ControlTexts& controls) {
    controls.Keep();
    WriteStoredSettings(items);
  }

  static std::string Section(Setting setting) { return std::string("Quellix\\") + SchemaRow(setting).section; }
  void Put(Setting setting, const std::string& text) const { store.PutText(SchemaRow(setting).key, text, Section(setting)); }
  std::string Stored(Setting setting) const { return store.Text(SchemaRow(setting).key, Section(setting)); }

  // The number of the error that saving raises, 0 for none.
  int SavingRaises(const ControlTexts& controls) {
    try {
      Write(controls);
    } catch (const RuntimeError& error) {
      return error.number;
    }
    return 0;
  }

  // The saved settings that the store holds, and no others.
  std::vector<Setting> WrittenInOrder() const {
    std::vector<Setting> written;
    for (const Setting setting : SaveOrder())
      if (Stored(setting) != "(no value)") written.push_back(setting);
    return written;
  }

  ScratchKey store{"Software\\Quellix"};
};
using ReadStoredSettingsTest = StoredSettings;
using WriteStoredSettingsTest = StoredSettings;

const ControlTexts kControls = {"15", "30", "9", "45", "1", "07"};

// The rows that ReadStoredSettings has a variable for.
std::vector<SettingRow> VariableRows() {
  std::vector<SettingRow> rows;
  std::copy_if(std::begin(kSchema), std::end(kSchema), std::back_inserter(rows), [](const SettingRow& row) {
    return row.readBy == ReadBy::StoredSettings || row.readBy == ReadBy::StoredSettingsFirst;
  });
  return rows;
}

}  // namespace

TEST_F(ReadStoredSettingsTest, GivesEveryVariableItsDefaultWhenTheStoreIsEmpty) {
  Read();
  EXPECT_EQ(flags[0], "1");
  EXPECT_EQ(flags[1], "1");
  const std::pair<Setting, const char*> others[] = {
      {Setting::chkShEnable, "0"},     {Setting::chkRbt, "0"},       {Setting::CHKieclose, "False"},
      {Setting::ScheduleSecond, "0"},  {Setting::ScheduleHour, "0"}, {Setting::ScheduleDay, "0"},
      {Setting::ScheduleMinutes, "0"}, {Setting::ScheduleMin, "60"}, {Setting::ScheduledTime, "9:00 AM"},
      {Setting::LoadStartup, "0"},     {Setting::Startup, "0"},      {Setting::Shutdown, "0"}};
  for (const auto& [setting, text] : others) EXPECT_EQ(Settings[setting], text) << SchemaRow(setting).key;
  EXPECT_FALSE(Settings.CloseBrowsers);
  EXPECT_EQ(Settings.BossKeyCode, 121);
  EXPECT_EQ(Err.Number(), 0);
}

TEST_F(ReadStoredSettingsTest, ReadsEveryVariableFromItsOwnKey) {
  for (const SettingRow& row : VariableRows()) Put(row.setting, std::string("of ") + row.key);
  Read();
  for (const SettingRow& row : VariableRows()) EXPECT_EQ(Settings[row.setting], std::string("of ") + row.key);
}

TEST_F(ReadStoredSettingsTest, TakesTheBlanksAroundAwayAndNothingElse) {
  for (const SettingRow& row : VariableRows()) Put(row.setting, "   9:00 AM\t  ");
  Read();
  for (const SettingRow& row : VariableRows()) EXPECT_EQ(Settings[row.setting], "9:00 AM\t") << row.key;
}

TEST_F(ReadStoredSettingsTest, TakesTheDefaultForAValueThatIsNoText) {
  for (const DWORD type : {REG_DWORD, REG_BINARY, REG_EXPAND_SZ, REG_MULTI_SZ}) {
    for (const SettingRow& row : kSchema) store.Put(row.key, type, std::string("7\0\0\0", 4), Section(row.setting));
    Settings = SettingsVariables();
    Read();
    for (const SettingRow& row : VariableRows())
      EXPECT_EQ(Settings[row.setting], row.defaultText) << row.key << ", type " << type;
    EXPECT_EQ(Settings.BossKeyCode, 121) << "type " << type;
    EXPECT_FALSE(Settings.CloseBrowsers) << "type " << type;
  }
}

// A deleter errs to the safe side: what nobody can have ticked is not ticked.
TEST_F(ReadStoredSettingsTest, TicksAnItemWhoseFlagIsMissingAndNoneWhoseFlagIsNoText) {
  Read();
  EXPECT_EQ(flags[0] + flags[1], "11");
  for (const DWORD type : {REG_NONE, REG_DWORD, REG_BINARY, REG_EXPAND_SZ, REG_MULTI_SZ}) {
    store.Put("FirstItem", type, std::string("1\0\0\0", 4), kItemsKey);
    Read();
    EXPECT_EQ(flags[0], "0") << "type " << type;
    EXPECT_EQ(flags[1], "1") << "which is missing";
  }
}

TEST_F(ReadStoredSettingsTest, TakesOddTextsAsTheyAre) {
  const std::string texts[] = {"", "2", "-1", "abc", "99999999999999999999", std::string(10000, '1')};
  for (const std::string& text : texts) {
    for (const SettingRow& row : kSchema) Put(row.setting, text);
    Read();
    for (const SettingRow& row : VariableRows())
      EXPECT_TRUE(Settings[row.setting] == text) << row.key << ", \"" << text.substr(0, 40) << '"';
  }
}

TEST_F(ReadStoredSettingsTest, ReadsUpToAZeroAndWithoutATerminatingOne) {
  // Windows 9x ends every text itself, so the value cannot be made there; the settings of the NT family run this.
  if (EndsEveryText()) GTEST_SKIP() << "this Windows has no such value";
  for (const SettingRow& row : kSchema)
    store.Put(row.key, REG_SZ,
              std::string("12\0"
                          "34",
                          5),
              Section(row.setting));
  Read();
  for (const SettingRow& row : VariableRows()) EXPECT_EQ(Settings[row.setting], "12") << row.key;
  for (const SettingRow& row : kSchema) store.Put(row.key, REG_SZ, "34", Section(row.setting));
  Read();
  for (const SettingRow& row : VariableRows()) EXPECT_EQ(Settings[row.setting], "34") << row.key;
  EXPECT_EQ(Settings.BossKeyCode, 34);
}

TEST_F(ReadStoredSettingsTest, MakesABooleanOfTheTextOfTheCloseBrowsersOption) {
  const std::pair<const char*, bool> cases[] = {{"True", true}, {"true", true}, {" TRUE ", true}, {"False", false},
                                                {"1", true},    {"-1", true},   {"0", false}};
  for (const auto& [text, value] : cases) {
    Settings.CloseBrowsers = !value;
    Put(Setting::CHKieclose, text);
    Read();
    EXPECT_EQ(Settings.CloseBrowsers, value) << '"' << text << '"';
  }
}

TEST_F(ReadStoredSettingsTest, KeepsTheBooleanForATextThatIsNone) {
  for (const char* text : {"", "Yes", "Falsch", "1 0"}) {
    for (const bool before : {true, false}) {
      Settings.CloseBrowsers = before;
      Put(Setting::CHKieclose, text);
      Read();
      EXPECT_EQ(Settings.CloseBrowsers, before) << '"' << text << '"';
    }
  }
}

TEST_F(ReadStoredSettingsTest, MakesANumberOfTheTextOfTheBossKey) {
  const std::pair<const char*, std::int32_t> cases[] = {
      {"112", 112}, {" 123 ", 123}, {"0", 0}, {"-5", -5}, {"F10", 0}, {"", 0}, {"2147483647", 2147483647}};
  for (const auto& [text, code] : cases) {
    Put(Setting::bossKey, text);
    Read();
    EXPECT_EQ(Settings.BossKeyCode, code) << '"' << text << '"';
  }
}

TEST_F(ReadStoredSettingsTest, KeepsTheBossKeyForANumberThatIsOutOfRange) {
  for (const std::string& text : {std::string("2147483648"), std::string("1e300"), std::string(10000, '9')}) {
    Put(Setting::bossKey, text);
    Read();
    EXPECT_EQ(Settings.BossKeyCode, 121) << text.substr(0, 40);
  }
}

TEST_F(ReadStoredSettingsTest, SetsTheTickCounterOfTheSchedulerToZero) {
  Settings.ScheduleTickCount = 1234;
  Read();
  EXPECT_EQ(Settings.ScheduleTickCount, 0);
}

TEST_F(WriteStoredSettingsTest, WritesEverySavedSettingAndLeavesTheOthersAlone) {
  Read();
  Write(kControls);
  for (const SettingRow& row : kSchema)
    EXPECT_EQ(Stored(row.setting) == "(no value)", row.saved == Saved::ByOthers) << row.key;
  EXPECT_EQ(store.Text("FirstItem", kItemsKey), "1");
  EXPECT_EQ(store.Text("SecondItem", kItemsKey), "1");
  EXPECT_EQ(Stored(Setting::ScheduleMin), "15");
  EXPECT_EQ(Stored(Setting::ScheduleMinutes), "30");
  EXPECT_EQ(Stored(Setting::ScheduleHour), "9");
  EXPECT_EQ(Stored(Setting::ScheduleSecond), "45");
  EXPECT_EQ(Stored(Setting::chkOptions), "1");
  EXPECT_EQ(Stored(Setting::txtLevel), "07") << "the text of the box as it is";
}

TEST_F(WriteStoredSettingsTest, BringsBackWhatItWrote) {
  Read();
  flags[0] = "0";
  Settings[Setting::chkShEnable] = Settings[Setting::chkRbt] = Settings[Setting::Shutdown] = "1";
  Settings[Setting::LoadStartup] = Settings[Setting::Startup] = Settings[Setting::ScheduleDay] = "1";
  Settings[Setting::ScheduledTime] = "11:45 PM";
  Settings.CloseBrowsers = true;
  Write(kControls);
  const SettingsVariables saved = std::exchange(Settings, SettingsVariables());
  flags[0] = flags[1] = "";
  Read();
  for (const SettingRow& row : VariableRows()) {
    if (row.saved == Saved::Yes) {
      EXPECT_EQ(Settings[row.setting], saved[row.setting]) << row.key;
    }
  }
  EXPECT_TRUE(Settings.CloseBrowsers);
  EXPECT_EQ(flags[0], "0");
  EXPECT_EQ(flags[1], "1");
}

TEST_F(WriteStoredSettingsTest, WritesTheCloseBrowsersOptionAsAWordAndTheFlagsAsDigits) {
  Read();
  Write(kControls);
  EXPECT_EQ(Stored(Setting::CHKieclose), "False");
  EXPECT_EQ(Stored(Setting::chkRbt), "0");
  Settings.CloseBrowsers = true;
  Settings[Setting::chkRbt] = "1";
  Write(kControls);
  EXPECT_EQ(Stored(Setting::CHKieclose), "True");
  EXPECT_EQ(Stored(Setting::chkRbt), "1");
}

TEST_F(WriteStoredSettingsTest, NeverKeepsErasingAtStartUpWithoutLoadingAtStartUp) {
  Read();
  Settings[Setting::LoadStartup] = "0";
  Settings[Setting::Startup] = "1";
  Write(kControls);
  EXPECT_EQ(Stored(Setting::Startup), "0");
  EXPECT_EQ(Settings[Setting::Startup], "0");
  Settings[Setting::LoadStartup] = Settings[Setting::Startup] = "1";
  Write(kControls);
  EXPECT_EQ(Stored(Setting::Startup), "1");
}

TEST_F(WriteStoredSettingsTest, PutsThePickersHourAndMinutesInThePlaceOfTheOptionFlags) {
  Read();
  Settings[Setting::ScheduleHour] = "1";  // every hour
  Write({"60", "0", "9", "0", "0", "50"});
  EXPECT_EQ(Stored(Setting::ScheduleHour), "9");
  EXPECT_EQ(Settings[Setting::ScheduleHour], "9");
  Settings[Setting::ScheduleMinutes] = "1";  // every N minutes
  Write({"60", "30", "1", "0", "0", "50"});
  EXPECT_EQ(Stored(Setting::ScheduleMinutes), "30");
  EXPECT_EQ(Stored(Setting::ScheduleHour), "1") << "one o'clock reads as the every-hour option";
}

TEST_F(WriteStoredSettingsTest, ComesBackAfterTheStoreWasDeletedMeanwhile) {
  Read();
  Write(kControls);
  store.Remove();
  Write(kControls);
  EXPECT_EQ(WrittenInOrder(), SaveOrder());
}

TEST_F(WriteStoredSettingsTest, RaisesAndWritesNothingWhenTheStoreCannotBeMade) {
  Read();
  store.Create("", REG_OPTION_VOLATILE);  // which can hold no lasting key
  EXPECT_NE(SavingRaises(kControls), 0);
  EXPECT_FALSE(store.Exists("Quellix"));
}

// Each section in turn may not be written: what comes before its first key is new, all the rest is as it was.
TEST_F(WriteStoredSettingsTest, StopsAtTheFirstKeyThatCannotBeWritten) {
  for (const Setting blocked : {Setting::ScheduleSecond, Setting::LoadStartup, Setting::txtLevel}) {
    store.Remove();
    Read();
    const std::string section = Section(blocked);
    const LockedKey lock(store.Path() + "\\" + section);
    EXPECT_EQ(SavingRaises(kControls), kPermissionDenied);
    const auto order = SaveOrder();
    EXPECT_EQ(WrittenInOrder(), std::vector<Setting>(order.begin(), std::find(order.begin(), order.end(), blocked)))
        << section;
  }
}

TEST_F(WriteStoredSettingsTest, StopsAtAnItemThatCannotBeWritten) {
  Read();
  const LockedKey lock(store.Path() + "\\" + kItemsKey);
  EXPECT_EQ(SavingRaises(kControls), kPermissionDenied);
  EXPECT_TRUE(WrittenInOrder().empty());
}

TEST_F(WriteStoredSettingsTest, KeepsTheEarlierValuesOfWhatItCannotWrite) {
  Read();
  Write(kControls);
  const LockedKey lock(store.Path() + "\\" + Section(Setting::Shutdown));
  flags[1] = "0";
  Settings[Setting::Shutdown] = "1";
  EXPECT_EQ(SavingRaises({"16", "31", "10", "46", "0", "08"}), kPermissionDenied);
  EXPECT_EQ(store.Text("SecondItem", kItemsKey), "0") << "comes before";
  EXPECT_EQ(Stored(Setting::Shutdown), "0");
  EXPECT_EQ(Stored(Setting::ScheduleMin), "15");
  EXPECT_EQ(Stored(Setting::txtLevel), "07") << "comes after";
}
