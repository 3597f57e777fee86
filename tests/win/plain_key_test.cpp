// Registry links that a user plants for a program with more rights: what they lead to is neither opened nor swept nor
// written.
#include "platform/plain_key.h"

#include <gtest/gtest.h>

#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleaning.h"
#include "platform/Reg32.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "settings/settings_store.h"

using namespace platform;

namespace {

constexpr char kTarget[] = "Software\\QuellixPlainKeyTarget";
constexpr wchar_t kTargetPath[] = L"\\Registry\\Machine\\Software\\QuellixPlainKeyTarget";
constexpr char kPlace[] = "Software\\QuellixPlainKey";

UniqueKey Create(HKEY root, const std::string& path, DWORD options = 0) {
  HKEY key = nullptr;
  ::RegCreateKeyExA(root, path.c_str(), 0, nullptr, options, KEY_ALL_ACCESS | KEY_CREATE_LINK, nullptr, &key, nullptr);
  EXPECT_NE(key, nullptr) << path;
  return UniqueKey(key);
}

// By a function of later systems.
void Remove(HKEY root, const std::string& path) {
  using DeleteTree = LONG(WINAPI*)(HKEY, LPCSTR);
  void* const found = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("advapi32.dll"), "RegDeleteTreeA"));
  reinterpret_cast<DeleteTree>(found)(root, path.c_str());
}

void Link(const std::string& path, HKEY root = HKEY_CURRENT_USER) {
  Remove(root, path);
  const UniqueKey link = Create(root, path, REG_OPTION_CREATE_LINK);
  ASSERT_EQ(::RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK, reinterpret_cast<const BYTE*>(kTargetPath),
                             sizeof kTargetPath - sizeof(wchar_t)),
            ERROR_SUCCESS);
}

void Unlink(const std::string& path, HKEY root = HKEY_CURRENT_USER) {
  HKEY link = nullptr;
  if (::RegOpenKeyExA(root, path.c_str(), REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, &link) != ERROR_SUCCESS) return;
  using DeleteKey = LONG(WINAPI*)(HKEY);
  void* const found = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "NtDeleteKey"));
  reinterpret_cast<DeleteKey>(found)(link);
  ::RegCloseKey(link);
}

class PlainKey : public testing::Test {
 protected:
  void SetUp() override {
    StopErase = false;
    const UniqueKey target = Create(HKEY_LOCAL_MACHINE, kTarget);
    Create(HKEY_LOCAL_MACHINE, std::string(kTarget) + "\\below");
    for (const char* name : {"url1", "url2", "canary"})
      ::RegSetValueExA(target.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>("text"), 5);
    Create(HKEY_CURRENT_USER, std::string(kPlace) + "\\a\\b");
  }
  void TearDown() override {
    DWORD values = 0, keys = 0;
    const UniqueKey target = Create(HKEY_LOCAL_MACHINE, kTarget);
    ::RegQueryInfoKeyA(target.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr, nullptr,
                       nullptr);
    EXPECT_EQ(values, 3u) << "something was taken from, or written to, what the link leads to";
    EXPECT_EQ(keys, 1u);
    Remove(HKEY_CURRENT_USER, kPlace);
    Remove(HKEY_LOCAL_MACHINE, kTarget);
  }

  static LONG Open(const std::string& path) {
    UniqueKey key;
    const LONG status = OpenPlainKey(HKEY_CURRENT_USER, path, KEY_READ, key);
    EXPECT_EQ(static_cast<bool>(key), status == ERROR_SUCCESS);
    return status;
  }
};

}  // namespace

TEST_F(PlainKey, IsOpenedByItsPath) {
  EXPECT_EQ(Open("Software"), ERROR_SUCCESS);
  EXPECT_EQ(Open(std::string(kPlace) + "\\a\\b"), ERROR_SUCCESS);
  EXPECT_EQ(Open(std::string(kPlace) + "\\a\\c"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(std::string(kPlace) + "\\c\\a\\b"), ERROR_FILE_NOT_FOUND);
}

TEST_F(PlainKey, IsNoLinkAndNotReachedThroughOne) {
  Link(std::string(kPlace) + "\\link");
  EXPECT_EQ(Open(std::string(kPlace) + "\\link"), ERROR_CANT_RESOLVE_FILENAME);
  EXPECT_EQ(Open(std::string(kPlace) + "\\link\\below"), ERROR_CANT_RESOLVE_FILENAME);
  Unlink(std::string(kPlace) + "\\link");
}

TEST_F(PlainKey, IsAllThatTheCleanersSweepAndDelete) {
  const struct {
    const char* key;
    void (*clean)();
  } rows[] = {
      {"Software\\Microsoft\\Internet Explorer\\TypedURLs", &cleaners::Command7},
      {"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU", &cleaners::ClearRunMRU},
      {"Software\\Microsoft\\Internet Explorer\\IntelliForms", &cleaners::ClearAutoCompletePasswords},
      {"Software\\Microsoft\\Windows\\Currentversion\\Explorer\\Doc Find Spec MRU", &cleaners::ClearFind},
      {"Software\\Microsoft\\Windows\\CurrentVersion\\StreamMRU", &cleaners::ClearRegistryStreams},
  };
  for (const auto& row : rows) {
    Link(row.key);
    row.clean();
    Unlink(row.key);
  }
}

TEST_F(PlainKey, IsAllThatAValueIsWrittenToOrDeletedFrom) {
  for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    Create(root, kPlace);
    Link(std::string(kPlace) + "\\link", root);
    for (const char* below : {"", "\\below", "\\new"})
      SaveKeyValue(root, std::string(kPlace) + "\\link" + below, "written", "text", REG_SZ);
    DeleteValue(root, std::string(kPlace) + "\\link", "canary");
    Unlink(std::string(kPlace) + "\\link", root);
    SaveKeyValue(root, kPlace, "written", "text", REG_SZ);
    EXPECT_FALSE(IsValueMissing(root, kPlace, "written"));
    DeleteValue(root, kPlace, "written");
    EXPECT_TRUE(IsValueMissing(root, kPlace, "written"));
  }
  Remove(HKEY_LOCAL_MACHINE, kPlace);
}

TEST_F(PlainKey, IsAllThatASettingIsWrittenTo) {
  constexpr char kStore[] = "Software\\Quellix";
  for (const char* link : {"", "\\Quellix", "\\Quellix\\Boss"}) {
    Remove(HKEY_CURRENT_USER, kStore);
    Link(std::string(kStore) + link);
    EXPECT_THROW(settings::SaveSetting("Boss", "bossKey", "112"), RuntimeError) << link;
    Unlink(std::string(kStore) + link);
    settings::SaveSetting("Boss", "bossKey", "112");
    EXPECT_EQ(settings::GetSetting("Boss", "bossKey", ""), "112") << link;
  }
  Remove(HKEY_CURRENT_USER, kStore);
}
