// The cleaners that hand their work to the shell: the recent-documents list and the recycle bin.
#include <gtest/gtest.h>

#include "cleaners/modCleanItems.h"
#include "cleaners/recycle_bin_root.h"
#include "log_recorder.h"
#include "message_box_user.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "scratch_folder.h"

// The shell's headers need the lean windows.h before them.
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

namespace {

class ClearRecentDocsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { ::CoInitialize(nullptr); }
  static void TearDownTestSuite() { ::CoUninitialize(); }

  static std::vector<std::string> Recent() { return NamesIn(FindSpecialFolder(CSIDL_RECENT)); }

  ScratchFolder folder;
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

TEST_F(ClearRecentDocsTest, EmptiesTheList) {
  for (const char* name : {"letter.txt", "picture.bmp"}) ::SHAddToRecentDocs(SHARD_PATHA, folder.File(name).c_str());
  ASSERT_EQ(Recent().size(), 2u) << FindSpecialFolder(CSIDL_RECENT);
  ClearRecentDocs();
  EXPECT_EQ(Recent(), std::vector<std::string>());
  EXPECT_TRUE(IsThere(folder / "letter.txt")) << "the documents themselves stay";
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recent Docs List Cleared", "(stamp)"}}));
}

TEST_F(EmptyRecycleBinTest, EmptiesEveryBinWithoutAsking) {
  const LogRecorder log;
  EmptyRecycleBin("", true, true, true);
  EXPECT_EQ(ItemsInRecycleBin(), 0);
  EXPECT_EQ(log.Stamped(), (LogLines{{"Recycle Bin Cleared ", "(stamp)"}})) << "the blank at the end is meant";
}
