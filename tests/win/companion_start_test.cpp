// How the companion program iea.exe is started, told by a witness in its place.
#include <gtest/gtest.h>

#include <sstream>

#include "cleaners/mdFHCCleaner.h"
#include "connection.h"
#include "message_box_user.h"
#include "platform/runtime_error.h"
#include "platform/special_folder.h"
#include "platform/stop_request.h"
#include "scratch_folder.h"

using namespace cleaners;
using namespace platform;

namespace {

constexpr char kCompanion[] = "C:\\test\\iea.exe";
constexpr char kTold[] = "C:\\test\\iea.exe.txt";

struct Testimony {
  std::string showState, commandLine, currentFolder;
};

class CompanionStart : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(ProgramFolder(), FullPath(L"C:\\test"));
    ::DeleteFileA(kTold);
    ASSERT_TRUE(::CopyFileA("C:\\witness.exe", kCompanion, FALSE));
    GoOnline();
    Err.Clear(), StopErase = false;
  }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
    EXPECT_EQ(user.Boxes().size(), reported ? 1u : 0u);
    ::SetCurrentDirectoryA("C:\\test");
    ::DeleteFileA(kTold);
    DeleteTheCompanion();
  }

  // Its process may still be ending.
  static void DeleteTheCompanion() {
    for (const DWORD start = ::GetTickCount(); IsThere(kCompanion) && ::GetTickCount() - start < 20000;)
      if (!::DeleteFileA(kCompanion)) ::Sleep(5);
    EXPECT_FALSE(IsThere(kCompanion));
  }

  // It is the current one of a process that may still be ending.
  static void RemoveTheWorkingFolder() {
    for (const DWORD start = ::GetTickCount(); IsThere("C:\\test\\1") && ::GetTickCount() - start < 20000;)
      if (!::RemoveDirectoryA("C:\\test\\1")) ::Sleep(5);
    EXPECT_FALSE(IsThere("C:\\test\\1"));
  }

  // Waits until the companion has been started. What it tells is there as a whole, but who gave it its name may still have
  // it open.
  static Testimony WaitForIt() {
    std::string text;
    for (const DWORD start = ::GetTickCount(); text.empty() && ::GetTickCount() - start < 20000; ::Sleep(5))
      if (IsThere(kTold)) text = ReadWhole(kTold);
    std::istringstream lines(text);
    Testimony told;
    for (std::string* line : {&told.showState, &told.commandLine, &told.currentFolder}) {
      std::getline(lines, *line);
      if (!line->empty() && line->back() == '\r') line->pop_back();
    }
    return told;
  }

  // A start takes place before the next one, so that none is on its way any longer when that one is seen.
  static void ExpectThatNoneIsOnItsWay() {
    EXPECT_FALSE(IsThere(kTold));
    StopErase = false;
    ASSERT_TRUE(::CopyFileA("C:\\witness.exe", kCompanion, FALSE));
    ::CreateDirectoryA("C:\\test\\1", nullptr);
    ::SetCurrentDirectoryA("C:\\test");
    cmdAutoComplte();
    EXPECT_EQ(WaitForIt().currentFolder, "C:\\test\\1") << "told by a start that was not to be";
    RemoveTheWorkingFolder();
  }

  // The machine is on line.
  void ExpectReport(const std::string& text) {
    reported = true;
    ASSERT_EQ(user.Boxes().size(), 1u);
    EXPECT_EQ(user.Boxes().front().text.substr(0, text.size()), text);
  }

  MessageBoxUser user;
  bool reported = false;
};

}  // namespace

TEST_F(CompanionStart, HandsOverTheArgument1AndHidesIt) {
  cmdAutoComplte();
  const Testimony told = WaitForIt();
  EXPECT_EQ(told.commandLine, "\"C:\\test\\iea.exe\" 1");
  EXPECT_EQ(told.showState, std::to_string(SW_HIDE));
}

TEST_F(CompanionStart, NamesTheWorkingFolder1) {
  ASSERT_TRUE(::CreateDirectoryA("C:\\test\\1", nullptr));
  cmdAutoComplte();
  EXPECT_EQ(WaitForIt().currentFolder, "C:\\test\\1");
  RemoveTheWorkingFolder();
}

TEST_F(CompanionStart, NeedsNoFolderOfThatName) {
  ASSERT_FALSE(IsThere("C:\\test\\1"));
  cmdAutoComplte();
  EXPECT_EQ(WaitForIt().commandLine, "\"C:\\test\\iea.exe\" 1");
}

TEST_F(CompanionStart, TakesTheOneOfTheProgramsFolderWhateverTheCurrentFolderIs) {
  const ScratchFolder other("C:\\other");
  ASSERT_TRUE(::CopyFileA("C:\\witness.exe", (other / "iea.exe").c_str(), FALSE));
  ::SetCurrentDirectoryA(other.Path().c_str());
  cmdAutoComplte();
  EXPECT_EQ(WaitForIt().commandLine, "\"C:\\test\\iea.exe\" 1");
  EXPECT_FALSE(IsThere(other / "iea.exe.txt"));
  ::SetCurrentDirectoryA("C:\\test");
}

TEST_F(CompanionStart, IsReportedAsFailedWhereTheCompanionIsMissing) {
  const ScratchFolder other("C:\\other");
  ASSERT_TRUE(::CopyFileA("C:\\witness.exe", (other / "iea.exe").c_str(), FALSE));
  ::SetCurrentDirectoryA(other.Path().c_str());
  DeleteTheCompanion();
  cmdAutoComplte();
  ExpectReport("mdFHCCleaner,cmdAutoComplte53File not found");
  EXPECT_FALSE(IsThere(other / "iea.exe.txt"));
  ExpectThatNoneIsOnItsWay();
}

TEST_F(CompanionStart, IsReportedAsFailedWhereTheCompanionIsNoProgram) {
  DeleteTheCompanion();
  WriteWhole(kCompanion, "no program");
  cmdAutoComplte();
  ExpectReport("mdFHCCleaner,cmdAutoComplte");
  ExpectThatNoneIsOnItsWay();
}

TEST_F(CompanionStart, DoesNotTakePlaceAfterAStop) {
  StopErase = true;
  cmdAutoComplte();
  ExpectThatNoneIsOnItsWay();
}
