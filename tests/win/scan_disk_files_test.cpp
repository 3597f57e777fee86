// The files that ScanDisk leaves in the root of a drive. They are listed there and deleted by their bare names, so only
// what the current folder holds is reached: the names that a listing gives are used without their folder.
#include <gtest/gtest.h>

#include "cleaners/modCleaning.h"
#include "cleaners/wipe_file.h"
#include "cleaners/wipe_state.h"
#include "log_recorder.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "scratch_folder.h"
#include "window_event.h"

using namespace cleaners;
using namespace platform;

namespace {

const std::string kRootFiles[] = {"C:\\FILE0000.CHK", "C:\\file0001.chk", "C:\\hidden.chk", "C:\\kept.chkx",
                                  "C:\\kept.txt",     "D:\\FILE0000.CHK", "D:\\other.chk",  "C:\\folder.chk\\inner.chk"};

class ClearScanDiskFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    StopErase = false;
    WipePasses = 0;
    Err.Clear();
    ::CreateDirectoryA("C:\\folder.chk", nullptr);
    for (const std::string& path : kRootFiles) WriteWhole(path, "content");
    ::SetFileAttributesA("C:\\hidden.chk", FILE_ATTRIBUTE_HIDDEN);
    ASSERT_EQ(Left(), std::vector<std::string>(std::begin(kRootFiles), std::end(kRootFiles)));
  }

  void TearDown() override {
    StopErase = false;
    WipePasses = 0;
    ::SetCurrentDirectoryA("C:\\test");
    for (const std::string& path : kRootFiles) {
      ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileA(path.c_str());
    }
    ::RemoveDirectoryA("C:\\folder.chk");
  }

  static std::vector<std::string> Left() {
    std::vector<std::string> left;
    for (const std::string& path : kRootFiles)
      if (IsThere(path)) left.push_back(path);
    return left;
  }

  ScratchFolder elsewhere;
  LogRecorder log;
};

class WipeMatchingFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    StopErase = false;
    for (const char* name : {"one.tmp", "two.txt", "three"}) folder.File(name);
    ::SetFileAttributesA(folder.File("four.tmp").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    ::CreateDirectoryA((folder / "folder.tmp").c_str(), nullptr);
    ::SetCurrentDirectoryA(folder.Path().c_str());
  }
  void TearDown() override { ::SetCurrentDirectoryA("C:\\test"); }

  ScratchFolder folder;
};

const std::vector<std::string> kAll(std::begin(kRootFiles), std::end(kRootFiles));
const LogLines kDone = {{"Scan Disk Files", "(stamp)"}};

}  // namespace

TEST_F(ClearScanDiskFilesTest, DeletesNothingWhenTheCurrentFolderIsElsewhere) {
  ::SetCurrentDirectoryA(elsewhere.Path().c_str());
  ClearScanDiskFiles();
  EXPECT_EQ(Left(), kAll);
  EXPECT_EQ(log.Stamped(), kDone);
}

TEST_F(ClearScanDiskFilesTest, DeletesTheFilesOfDriveCWhenItsRootIsTheCurrentFolder) {
  ::SetCurrentDirectoryA("C:\\");
  ClearScanDiskFiles();
  EXPECT_EQ(Left(), (std::vector<std::string>{"C:\\kept.chkx", "C:\\kept.txt", "D:\\FILE0000.CHK", "D:\\other.chk",
                                              "C:\\folder.chk\\inner.chk"}));
  EXPECT_EQ(log.Stamped(), kDone);
}

TEST_F(ClearScanDiskFilesTest, DeletesTheFilesOfDriveDWhenItsRootIsTheCurrentFolder) {
  ::SetCurrentDirectoryA("D:\\");
  ClearScanDiskFiles();
  std::vector<std::string> onDriveC;
  for (const std::string& path : kRootFiles)
    if (path[0] == 'C') onDriveC.push_back(path);
  EXPECT_EQ(Left(), onDriveC) << "FILE0000.CHK of drive C is listed too and only found on drive D";
  ::SetCurrentDirectoryA("C:\\");
}

TEST_F(ClearScanDiskFilesTest, DeletesNamesakesInTheCurrentFolderOnly) {
  const std::string namesake = elsewhere.File("FILE0000.CHK");
  const std::string own = elsewhere.File("own.chk");
  ::SetCurrentDirectoryA(elsewhere.Path().c_str());
  ClearScanDiskFiles();
  EXPECT_FALSE(IsThere(namesake));
  EXPECT_TRUE(IsThere(own)) << "no drive's root lists this name";
  EXPECT_EQ(Left(), kAll);
}

TEST_F(ClearScanDiskFilesTest, GoesOnPastAFileThatCannotBeDeleted) {
  ::SetFileAttributesA("C:\\FILE0000.CHK", FILE_ATTRIBUTE_READONLY);
  ::SetCurrentDirectoryA("C:\\");
  ClearScanDiskFiles();
  EXPECT_TRUE(IsThere("C:\\FILE0000.CHK"));
  EXPECT_FALSE(IsThere("C:\\file0001.chk"));
  EXPECT_FALSE(IsThere("C:\\hidden.chk"));
  ASSERT_FALSE(log.Lines().empty());
  EXPECT_EQ(log.Stamped().back(), kDone[0]);
}

TEST_F(ClearScanDiskFilesTest, DeletesNothingAfterAStop) {
  ::SetCurrentDirectoryA("C:\\");
  StopErase = true;
  ClearScanDiskFiles();
  EXPECT_EQ(Left(), kAll);
  EXPECT_EQ(log.Stamped(), (LogLines{{"Scan Disk Files **** aborted by user", "(stamp)"}}));
}

TEST_F(ClearScanDiskFilesTest, OverwritesNothingAfterAStop) {
  ::SetCurrentDirectoryA("C:\\");
  StopErase = true;
  WipePasses = 1;
  ClearScanDiskFiles();
  for (const std::string& path : kRootFiles) EXPECT_EQ(ReadWhole(path), "content") << path;
}

TEST_F(ClearScanDiskFilesTest, LogsOnceWhenThereIsNothingToDelete) {
  ::SetCurrentDirectoryA("C:\\");
  ClearScanDiskFiles();
  ClearScanDiskFiles();
  EXPECT_EQ(log.Stamped(), (LogLines{kDone[0], kDone[0]}));
}

TEST_F(ClearScanDiskFilesTest, GoesNoFurtherWhenTheStopArrivesMeanwhile) {
  ::SetFileAttributesA("C:\\FILE0000.CHK", FILE_ATTRIBUTE_READONLY);  // listed first, and its failure is logged
  ::SetCurrentDirectoryA("C:\\");
  LogCleanResult = [](WideView, WideView) { StopErase = true; };
  ClearScanDiskFiles();
  EXPECT_EQ(Left(), kAll);
}

TEST_F(WipeMatchingFilesTest, WipesTheFilesThatTheMaskLists) {
  WipeMatchingFiles(L"C:\\test\\scratch\\*.tmp");
  EXPECT_EQ(NamesIn(folder.Path(), "*.tmp"), std::vector<std::string>{"folder.tmp"});
  EXPECT_TRUE(IsThere(folder / "two.txt"));
  EXPECT_TRUE(IsThere(folder / "three"));
}

TEST_F(WipeMatchingFilesTest, LetsWindowEventsRunAfterAFileSoThatAStopReachesIt) {
  ::RemoveDirectoryA((folder / "folder.tmp").c_str());
  const WindowEvents events;
  events.AtTheNext([] { StopErase = true; });
  LetTheNextLookBeDue();
  WipeMatchingFiles(L"*.tmp");
  StopErase = false;
  EXPECT_TRUE(events.HasRun());
  EXPECT_NE(IsThere(folder / "one.tmp"), IsThere(folder / "four.tmp")) << "the first one goes, and nothing after the stop";
}

TEST_F(WipeMatchingFilesTest, WipesEveryFileForAMaskThatListsAll) {
  WipeMatchingFiles(L"C:\\test\\scratch\\*");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"folder.tmp"});
}

TEST_F(WipeMatchingFilesTest, TakesAMaskOfTheCurrentFolder) {
  WipeMatchingFiles(L"*.tmp");
  EXPECT_EQ(NamesIn(folder.Path(), "*.tmp"), std::vector<std::string>{"folder.tmp"});
}

TEST_F(WipeMatchingFilesTest, SkipsAMaskThatListsNothing) {
  const std::size_t before = NamesIn(folder.Path()).size();
  for (const wchar_t* mask : {L"C:\\test\\scratch\\*.none", L"Q:\\*.tmp", L"C:\\missing\\*.tmp", L""})
    WipeMatchingFiles(mask);
  EXPECT_EQ(NamesIn(folder.Path()).size(), before);
}
