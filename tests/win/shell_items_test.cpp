// The cleaners that hand their work to the shell: the recent-documents list and the recycle bin.
#include <gtest/gtest.h>

#include "cleaners/modCleanItems.h"
#include "log_recorder.h"
#include "message_box_user.h"
#include "platform/runtime_error.h"
#include "scratch_folder.h"
#include "scratch_key.h"

// The shell's headers need the lean windows.h before them.
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

using namespace cleaners;
using namespace platform;

namespace {

class ClearRecentDocsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { ::CoInitialize(nullptr); }
  static void TearDownTestSuite() { ::CoUninitialize(); }

  ScratchFolder folder;
  // Where the shell keeps the list; Wine clears this and leaves the links in the Recent folder, which Windows deletes too.
  ScratchKey list{"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RecentDocs"};
  LogRecorder log;
};

// Through the shell, as the Delete key of Explorer does.
int MoveToRecycleBin(const std::string& path) {
  const std::string list = path + '\0';
  SHFILEOPSTRUCTA operation{};
  operation.wFunc = FO_DELETE;
  operation.pFrom = list.c_str();
  operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI;
  return ::SHFileOperationA(&operation);
}

// -1 when the system does not tell.
long long ItemsInRecycleBin(const char* root = nullptr) {
  SHQUERYRBINFO info{};
  info.cbSize = sizeof info;
  return ::SHQueryRecycleBinA(root, &info) == S_OK ? info.i64NumItems : -1;
}

class EmptyRecycleBinTest : public testing::Test {
 protected:
  void SetUp() override {
    EmptyRecycleBin("", true, true, true);
    ASSERT_EQ(ItemsInRecycleBin(), 0);
    FillBin();
  }

  void FillBin() const {
    for (const char* name : {"one.txt", "two.txt", "three.txt"}) {
      const std::string path = folder.File(name);
      ASSERT_EQ(MoveToRecycleBin(path), 0);
      ASSERT_FALSE(IsThere(path));
    }
    ASSERT_EQ(ItemsInRecycleBin(), 3);
  }

  ScratchFolder folder;
};

}  // namespace

TEST_F(ClearRecentDocsTest, EmptiesTheListAndLeavesTheDocuments) {
  const std::string documents[] = {folder.File("letter.txt"), folder.File("picture.bmp")};
  for (const std::string& document : documents) ::SHAddToRecentDocs(SHARD_PATHA, document.c_str());
  ASSERT_GE(list.ValueCount(), 2u);
  ClearRecentDocs();
  EXPECT_EQ(list.ValueCount(), 0u);
  for (const std::string& document : documents) EXPECT_TRUE(IsThere(document)) << document;
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recent Docs List Cleared", "(stamp)"}}));
}

TEST_F(ClearRecentDocsTest, ClearsAnEmptyList) {
  ClearRecentDocs();
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recent Docs List Cleared", "(stamp)"}}));
}

TEST_F(EmptyRecycleBinTest, EmptiesEveryBinWithoutAsking) {
  const LogRecorder log;
  const MessageBoxUser user(IDNO);
  EmptyRecycleBin("", true, true, true);
  EXPECT_EQ(ItemsInRecycleBin(), 0);
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recycle Bin Cleared ", "(stamp)"}})) << "with a blank at its end";
}

TEST_F(EmptyRecycleBinTest, TakesADriveInEachSpelling) {
  for (const char* root : {"C", "C:", "C:\\", "c"}) {
    EmptyRecycleBin(root, true, true, true);
    EXPECT_EQ(ItemsInRecycleBin(), 0) << root;
    FillBin();
  }
  EmptyRecycleBin("", true, true, true);
}

TEST_F(EmptyRecycleBinTest, AsksWhenConfirmationIsWanted) {
  const LogRecorder log;
  {
    const MessageBoxUser user(IDNO);
    EmptyRecycleBin("", false, true, true);
    EXPECT_EQ(user.Boxes().size(), 1u);
    EXPECT_EQ(ItemsInRecycleBin(), 3);
  }
  const MessageBoxUser user(IDYES);
  EmptyRecycleBin("", false, true, true);
  EXPECT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(ItemsInRecycleBin(), 0);
  const LogLine line = {"Recycle Bin Cleared ", "(stamp)"};
  EXPECT_EQ(log.Stamped(), (LogLines{line, line})) << "whatever the system answers";
}

TEST_F(EmptyRecycleBinTest, ClearsAnEmptyBin) {
  EmptyRecycleBin("", true, true, true);
  EmptyRecycleBin("", true, true, true);
  EXPECT_EQ(ItemsInRecycleBin(), 0);
}
