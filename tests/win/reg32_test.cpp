// Errors are reported only on line; here the machine is off line, so a reported one passes without a window.
#include "platform/Reg32.h"

#include <gtest/gtest.h>

#include "connection.h"
#include "platform/runtime_error.h"
#include "scratch_key.h"

using namespace platform;

namespace {

constexpr char kPath[] = "Software\\QuellixTest\\Reg32";

class Reg32 : public testing::Test {
 protected:
  static void SetUpTestSuite() { GoOffline(); }
  void SetUp() override { Err.Clear(); }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  static void Save(const std::string& name, const std::string& text, DWORD type = REG_SZ) {
    SaveKeyValue(HKEY_CURRENT_USER, kPath, name, text, type);
  }
  static std::int32_t Get(const std::string& name, std::int32_t defaultValue = 0) {
    return GetSettingString(HKEY_CURRENT_USER, kPath, name, defaultValue);
  }

  ScratchKey key{kPath};
};
using SaveKeyValueTest = Reg32;
using GetSettingStringTest = Reg32;
using DeleteValueTest = Reg32;

// Windows NT counts a zero that follows a text, whatever length it is given.
bool IsTextOf(const std::optional<RegistryValue>& value, const std::string& text) {
  return value == RegistryValue{REG_SZ, text} || value == RegistryValue{REG_SZ, text + '\0'};
}

}  // namespace

TEST_F(SaveKeyValueTest, CreatesEveryMissingLevelOfTheKey) {
  SaveKeyValue(HKEY_CURRENT_USER, key.Path() + "\\one\\two\\three", "name", "text", REG_SZ);
  EXPECT_EQ(key.Text("name", "one\\two\\three"), "text");
}

TEST_F(SaveKeyValueTest, WritesType1AsAText) {
  Save("name", "C:\\Program Files\\Quellix");
  EXPECT_TRUE(IsTextOf(key.Value("name"), "C:\\Program Files\\Quellix")) << *key.Value("name");
}

TEST_F(SaveKeyValueTest, WritesType0AsTheBytesOfTheTextWithoutATerminatingZero) {
  Save("name", "hello", REG_NONE);
  EXPECT_EQ(key.Value("name"), (RegistryValue{REG_NONE, "hello"}));
}

TEST_F(SaveKeyValueTest, WritesNothingForAnyOtherType) {
  for (const DWORD type : {2, 3, 4, 5, 6, 7, 8, 11, 255}) {
    Save("name", "1", type);
    EXPECT_EQ(key.Value("name"), std::nullopt) << "type " << type;
  }
  EXPECT_TRUE(key.Exists()) << "the key itself is made before the type is looked at";
}

TEST_F(SaveKeyValueTest, LeavesAnExistingValueAloneForAnyOtherType) {
  key.PutText("name", "before");
  Save("name", "after", REG_DWORD);
  EXPECT_EQ(key.Text("name"), "before");
}

TEST_F(SaveKeyValueTest, ReplacesALongerTextAndAnotherType) {
  key.PutText("text", "something quite long");
  key.Put("number", REG_DWORD, std::string("\1\0\0\0", 4));
  Save("text", "short");
  Save("number", "2");
  EXPECT_TRUE(IsTextOf(key.Value("text"), "short")) << *key.Value("text");
  EXPECT_TRUE(IsTextOf(key.Value("number"), "2")) << *key.Value("number");
}

TEST_F(SaveKeyValueTest, WritesAnEmptyText) {
  Save("text", "");
  Save("bytes", "", REG_NONE);
  EXPECT_TRUE(IsTextOf(key.Value("text"), ""));
  EXPECT_EQ(key.Value("bytes"), (RegistryValue{REG_NONE, ""}));
}

TEST_F(SaveKeyValueTest, WritesTheKeysOwnValueForAnEmptyName) {
  Save("", "own");
  EXPECT_EQ(key.Text(""), "own");
}

TEST_F(SaveKeyValueTest, CountsAZeroInsideTheText) {
  Save("name", std::string("a\0b", 3), REG_NONE);
  EXPECT_EQ(key.Value("name"), (RegistryValue{REG_NONE, std::string("a\0b", 3)}));
}

TEST_F(SaveKeyValueTest, TakesNamesAsLongAsThePathsThatAnsiCallsTake) {
  const std::string folder(220, 'k');
  const std::string name(255, 'n');
  SaveKeyValue(HKEY_CURRENT_USER, key.Path() + "\\" + folder, name, std::string(10000, 't'), REG_SZ);
  EXPECT_TRUE(key.Text(name, folder) == std::string(10000, 't')) << key.Text(name, folder).size() << " characters";
}

TEST_F(SaveKeyValueTest, SkipsAKeyThatCannotBeMade) {
  SaveKeyValue(HKEY_CURRENT_USER, key.Path() + "\\" + std::string(300, 'k'), "name", "text", REG_SZ);
  key.Create("", REG_OPTION_VOLATILE);  // which can hold no lasting key
  SaveKeyValue(HKEY_CURRENT_USER, key.Path() + "\\lasting", "name", "text", REG_SZ);
  EXPECT_FALSE(key.Exists("lasting"));
}

TEST_F(GetSettingStringTest, IsTheNumberOfAText) {
  const struct {
    const char* text;
    std::int32_t number;
  } cases[] = {{"12", 12}, {" 7 ", 7}, {"-3", -3}, {"0", 0}, {"2147483647", 2147483647}, {"-2147483648", INT32_MIN},
               {"2.5", 2}, {"3.5", 4}};
  for (const auto& each : cases) {
    key.PutText("name", each.text);
    EXPECT_EQ(Get("name", 99), each.number) << '"' << each.text << '"';
  }
}

TEST_F(GetSettingStringTest, IsTheDefaultForAMissingKey) {
  ASSERT_FALSE(key.Exists());
  EXPECT_EQ(Get("name", 42), 42);
  EXPECT_EQ(GetSettingString(HKEY_CURRENT_USER, kPath, "name"), 0) << "without a default argument";
}

TEST_F(GetSettingStringTest, IsTheDefaultForAMissingValue) {
  key.Create();
  EXPECT_EQ(Get("name", -1), -1);
}

TEST_F(GetSettingStringTest, IsTheDefaultForAValueThatIsNoText) {
  for (const DWORD type : {REG_NONE, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ}) {
    key.Put("name", type, std::string("5\0\0\0", 4));
    EXPECT_EQ(Get("name", 42), 42) << "type " << type;
  }
}

TEST_F(GetSettingStringTest, KeepsTheDefaultForATextThatIsNoNumber) {
  for (const char* text : {"12abc", "abc", "", "   ", "1 2", "--1", "0x10", "2147483648", "-2147483649", "1e99", "1e999"}) {
    key.PutText("name", text);
    EXPECT_EQ(Get("name", 42), 42) << '"' << text << '"';
  }
}

TEST_F(GetSettingStringTest, ReadsUpToTheFirstZero) {
  key.Put("name", REG_SZ,
          std::string("12\0"
                      "34\0",
                      6));
  EXPECT_EQ(Get("name"), 12);
}

TEST_F(GetSettingStringTest, ReadsATextWithoutATerminatingZero) {
  // Windows 9x ends every text itself, so the value cannot be made there; the settings of the NT family run this.
  if (EndsEveryText()) GTEST_SKIP() << "this Windows has no such value";
  key.Put("name", REG_SZ, "123");
  ASSERT_EQ(key.Value("name"), (RegistryValue{REG_SZ, "123"}));
  EXPECT_EQ(Get("name"), 123);
}

TEST_F(GetSettingStringTest, KeepsTheDefaultForAValueWithoutAByte) {
  // Windows 9x ends every text itself, so the value cannot be made there; the settings of the NT family run this.
  if (EndsEveryText()) GTEST_SKIP() << "this Windows has no such value";
  key.Put("name", REG_SZ, "");
  ASSERT_EQ(key.Value("name"), (RegistryValue{REG_SZ, ""}));
  EXPECT_EQ(Get("name", 42), 42);
}

TEST_F(GetSettingStringTest, ReadsAHugeText) {
  key.PutText("number", std::string(1000000, ' ') + "7");
  key.PutText("digits", std::string(1000000, '9'));
  EXPECT_EQ(Get("number", 42), 7);
  EXPECT_EQ(Get("digits", 42), 42);
}

TEST_F(DeleteValueTest, DeletesTheNamedValueOnly) {
  key.PutText("gone", "1");
  key.PutText("stays", "2");
  DeleteValue(HKEY_CURRENT_USER, kPath, "gone");
  EXPECT_EQ(key.Value("gone"), std::nullopt);
  EXPECT_EQ(key.Text("stays"), "2");
}

TEST_F(DeleteValueTest, LeavesTheKeyAndWhatIsBelowIt) {
  key.PutText("name", "1");
  key.PutText("name", "2", "below");
  DeleteValue(HKEY_CURRENT_USER, kPath, "name");
  EXPECT_TRUE(key.Exists());
  EXPECT_EQ(key.Text("name", "below"), "2");
}

TEST_F(DeleteValueTest, SkipsAMissingValueAndAMissingKey) {
  DeleteValue(HKEY_CURRENT_USER, kPath, "name");
  EXPECT_FALSE(key.Exists()) << "a missing key is not made";
  key.PutText("other", "1");
  DeleteValue(HKEY_CURRENT_USER, kPath, "name");
  EXPECT_EQ(key.Text("other"), "1");
}
