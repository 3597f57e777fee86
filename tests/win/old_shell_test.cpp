// The cleaners that ask the shell to delete a key or to start a program, on a Windows whose shell's libraries lack these
// functions, as the test's preparation makes one. The machine is on line, so that the user is told.
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

bool HasValue(const char* path, const char* name) {
  HKEY opened = nullptr;
  if (::RegOpenKeyA(HKEY_CURRENT_USER, path, &opened) != ERROR_SUCCESS) return false;
  const UniqueKey key(opened);
  return ::RegQueryValueExA(key.get(), name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
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

  Strings Texts() const {
    Strings texts;
    for (const ShownBox& box : user.Boxes()) texts.push_back(box.text);
    return texts;
  }

  MessageBoxUser user;
};

}  // namespace

// With a capital L in the first, as the program reports it.
TEST_F(OldShell, IsReportedUnderEachCleanersName) {
  Command7();
  ClearRunMRU();
  cmdAutoComplte();
  EXPECT_EQ(Texts(), (Strings{"mdFHCCLeaner,Command7453Specified DLL function not found",
                              "mdFHCCleaner,ClearRunMRU453Specified DLL function not found",
                              "mdFHCCleaner,cmdAutoComplte453Specified DLL function not found"}));
}

TEST_F(OldShell, IsReportedAfterAStopOnlyByTheCleanersThatDoNotLookAtIt) {
  StopErase = true;
  Command7();
  ClearRunMRU();
  cmdAutoComplte();
  EXPECT_EQ(Texts().size(), 2u);
}

TEST_F(OldShell, IsReportedToNobodyOffLine) {
  GoOffline();
  Command7();
  ClearRunMRU();
  cmdAutoComplte();
  EXPECT_EQ(Texts(), Strings());
}

TEST_F(OldShell, LeavesTheKeysWithWhatTheSweepLeft) {
  GoOffline();
  for (const char* path : {kTyped, kRun}) PutValues(path);
  Command7();
  ClearRunMRU();
  for (const char* path : {kTyped, kRun}) {
    EXPECT_FALSE(HasValue(path, "url1")) << path;
    EXPECT_TRUE(HasValue(path, "url2")) << path;
    EXPECT_FALSE(HasValue(path, "url3")) << path;
    EXPECT_TRUE(HasValue(path, "url4")) << path;
  }
}

TEST_F(OldShell, IsNeverReportedByThePasswordCleaner) {
  PutValues(kForms);
  const std::int32_t before = ClearedKeyCount;
  ClearAutoCompletePasswords();
  EXPECT_EQ(Texts(), Strings());
  EXPECT_TRUE(HasValue(kForms, "url1")) << "it has no sweep";
  EXPECT_EQ(ClearedKeyCount, before + 1);
}
