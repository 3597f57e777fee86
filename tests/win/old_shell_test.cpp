// The cleaners that ask the shell to delete a key or to start a program, on a Windows whose shell's libraries lack these
// functions, as the test's preparation makes one: keys go without it, a program that cannot be started is reported. The
// machine is on line, so that the user is told.
#include <gtest/gtest.h>

#include "cleaners/mdFHCCleaner.h"
#include "connection.h"
#include "message_box_user.h"
#include "platform/handles.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/system_functions.h"

using namespace cleaners;
using namespace platform;

namespace {

using Strings = std::vector<std::string>;

constexpr char kTyped[] = "Software\\Microsoft\\Internet Explorer\\TypedURLs";
constexpr char kRun[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU";
constexpr char kForms[] = "Software\\Microsoft\\Internet Explorer\\IntelliForms";

// The registry helper of the other tests deletes its keys with the very function that is missing here.
void PutValues(const char* path) {
  HKEY opened = nullptr;
  ::RegCreateKeyA(HKEY_CURRENT_USER, path, &opened);
  const UniqueKey key(opened);
  for (const char* name : {"url1", "url2", "url3", "url4"})
    ::RegSetValueExA(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>("text"), 5);
}

bool Exists(const char* path) {
  HKEY opened = nullptr;
  const bool there = ::RegOpenKeyA(HKEY_CURRENT_USER, path, &opened) == ERROR_SUCCESS;
  const UniqueKey key(opened);
  return there;
}

class OldShell : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsSystemDllPresent("shlwapi.dll"));
    ASSERT_TRUE(IsSystemDllPresent("shell32.dll"));
    ASSERT_FALSE(late::SHDeleteKey);
    ASSERT_FALSE(late::ShellOpen);
    ASSERT_FALSE(late::ShellOpenWide);
    GoOnline();
    Err.Clear(), StopErase = false;
  }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
    for (const char* path : {kTyped, kRun, kForms}) ::RegDeleteKeyA(HKEY_CURRENT_USER, path);
  }

  Strings Texts() const { return user.Texts(); }

  MessageBoxUser user;
};

}  // namespace

TEST_F(OldShell, IsReportedUnderTheNameOfTheCleanerThatStartsAProgram) {
  cmdAutoComplte();
  EXPECT_EQ(Texts(), Strings{"mdFHCCleaner,cmdAutoComplte453Specified DLL function not found"});
}

TEST_F(OldShell, IsNotReportedAfterAStop) {
  StopErase = true;
  cmdAutoComplte();
  EXPECT_EQ(Texts(), Strings());
}

TEST_F(OldShell, IsReportedToNobodyOffLine) {
  GoOffline();
  cmdAutoComplte();
  EXPECT_EQ(Texts(), Strings());
}

TEST_F(OldShell, KeepsNoKeyWithItsSubkeys) {
  for (const char* path : {kTyped, kRun, kForms}) {
    PutValues(path);
    PutValues((std::string(path) + "\\below\\deeper").c_str());
  }
  Command7();
  ClearRunMRU();
  ClearAutoCompletePasswords();
  for (const char* path : {kTyped, kRun, kForms}) EXPECT_FALSE(Exists(path)) << path;
  EXPECT_EQ(Texts(), Strings());
}
