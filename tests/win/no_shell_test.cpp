// A cleaner that meets a missing system function goes on with its next statement. The test's preparation takes the
// shell's libraries away.
#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "cleaners/NetScapeEraser.h"
#include "cleaners/OperaClean.h"
#include "cleaners/modCleanItems.h"
#include "cleaners/modCleaning.h"
#include "cleaners/temp_folder.h"
#include "log_recorder.h"
#include "platform/Reg32.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/system_functions.h"
#include "scratch_folder.h"
#include "shred/folder_removal.h"

using namespace cleaners;
using namespace platform;
using namespace shred;

namespace {

constexpr char kMemory[] = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Memory Management";
constexpr char kFind[] = "Software\\Microsoft\\Windows\\Currentversion\\Explorer\\Doc Find Spec MRU";

class WithoutShell : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(IsSystemDllPresent("shlwapi.dll"));
    ASSERT_FALSE(IsSystemDllPresent("shell32.dll"));
    Err.Clear();
  }
  LogRecorder log;
};

LONG QueryValue(const char* path, const char* name) {
  HKEY key = nullptr;
  const LONG opened = ::RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_READ, &key);
  if (opened != ERROR_SUCCESS) return opened;
  const LONG status = ::RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr);
  ::RegCloseKey(key);
  return status;
}

}  // namespace

TEST_F(WithoutShell, TheStreamsCleanerStillWritesThePageFileValue) {
  ClearRegistryStreams();
  EXPECT_EQ(QueryValue(kMemory, "ClearPageFileAtShutdown"), ERROR_SUCCESS);
  EXPECT_EQ(log.Stamped(), (LogLines{{"Registry Streams Cleared", "(stamp)"}}));
}

TEST_F(WithoutShell, TheFindCleanerDeletesItsKeys) {
  SaveKeyValue(HKEY_CURRENT_USER, kFind, "a", "secret*.doc", REG_SZ);
  ASSERT_EQ(QueryValue(kFind, "a"), ERROR_SUCCESS);
  ClearFind();
  EXPECT_EQ(QueryValue(kFind, "a"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(log.Stamped(), (LogLines{{"Find File List Cleared", "(stamp)"}}));
}

TEST_F(WithoutShell, TheRecycleBinAndRecentDocumentsAreStillLogged) {
  EmptyRecycleBin("", true, true, true);
  ClearRecentDocs();
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recycle Bin Cleared ", "(stamp)"}, {"Recent Docs List Cleared", "(stamp)"}}));
}

TEST_F(WithoutShell, TheTemporaryFolderIsNotCleanedWhileItsNeighboursAreUnknown) {
  EXPECT_THROW(FindSpecialFolder(kProfileFolder), RuntimeError);
  ClearWindowsTemp();
  for (const LogLine& line : log.Lines()) EXPECT_NE(line.text1, "Windows Temporary Files Cleared");
}

TEST_F(WithoutShell, TheShredderLeavesFoldersSinceNobodyTellsWhichOnesToKeep) {
  ::CreateDirectoryA("C:\\test\\folder", nullptr);
  EXPECT_FALSE(RemoveFolderTree(At("C:\\test\\folder")));
  EXPECT_TRUE(FolderCheck(At("C:\\test\\folder")));
}

TEST_F(WithoutShell, AFolderThatWindowsItselfTellsIsStillNoProfile) {
  constexpr char kUsers[] = "Software\\Netscape\\Netscape Navigator\\Users";
  SaveKeyValue(HKEY_LOCAL_MACHINE, kUsers, "CurrentUser", "joe", REG_SZ);
  for (const std::string folder : {"C:\\windows", "C:\\windows\\system32", "C:\\Program Files", "C:\\"}) {
    const std::string canary = folder + "\\FieldSchema.tbl";
    PutFile(canary);
    SaveKeyValue(HKEY_LOCAL_MACHINE, std::string(kUsers) + "\\joe", "DirRoot", folder, REG_SZ);
    NSTypedUrl();
    EXPECT_TRUE(IsThere(canary)) << canary;
    ::DeleteFileA(canary.c_str());
  }
}

TEST_F(WithoutShell, TheOtherBrowsersAreCleanedWhereTheRegistryOrTheCurrentFolderLeadsToThem) {
  constexpr char kUsers[] = "Software\\Netscape\\Netscape Navigator\\Users";
  const ScratchFolder folder;
  for (const char* name : {"FieldSchema.tbl", "mail\\trash", "cache\\x", "0\\cookies.dat", "0\\Cache\\x"}) folder.File(name);
  folder.File("Opera\\OPERA7\\profile\\global.dat");
  SaveKeyValue(HKEY_LOCAL_MACHINE, kUsers, "CurrentUser", "joe", REG_SZ);
  SaveKeyValue(HKEY_LOCAL_MACHINE, std::string(kUsers) + "\\joe", "DirRoot", folder.Path(), REG_SZ);
  ::SetCurrentDirectoryA(folder.Path().c_str());
  for (const auto cleaner : {&NSTypedUrl, &CleanNetscapeMail, &CleanNescapeCache, &CleanOperaCookies, &CleanOpera7Cookies,
                             &CleanOperaCache, &CleanOpera7Cache, &CleanOperaTypedUrls})
    cleaner();
  ::SetCurrentDirectoryA("C:\\test");
  EXPECT_EQ(NamesBelow(folder.Path()),
            (std::vector<std::string>{"0", "0\\Cache", "cache", "mail", "Opera", "Opera\\OPERA7", "Opera\\OPERA7\\profile",
                                      "Opera\\OPERA7\\profile\\global.dat"}));
  EXPECT_EQ(Err.Number(), 0) << Err.Description();
}
