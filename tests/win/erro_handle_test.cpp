// The machine is put on line by a proxy that the test's preparation runs, and off line by one that is not there.
#include "platform/ErroHandle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "connection.h"
#include "message_box_user.h"
#include "platform/Reg32.h"
#include "platform/addresses.h"
#include "platform/app_title.h"
#include "platform/internet_transfer.h"
#include "platform/system_functions.h"
#include "scratch_folder.h"
#include "scratch_key.h"

using namespace platform;

namespace {

// What the server was asked for, oldest first.
std::vector<std::string> Requests() {
  std::ifstream log("C:\\test\\requests.txt");
  std::vector<std::string> lines;
  for (std::string line; std::getline(log, line);) lines.push_back(line);
  return lines;
}

class ErroHandle : public testing::Test {
 protected:
  void SetUp() override {
    Err.Clear();
    GoOnline();
    requestsBefore = Requests().size();
  }
  void TearDown() override { EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description(); }

  std::size_t Probes() const { return Requests().size() - requestsBefore; }

  std::vector<std::string> Texts() const { return user.Texts(); }

  MessageBoxUser user;
  std::size_t requestsBefore = 0;
};
using IsOnlineTest = ErroHandle;
using ReportErrorTest = ErroHandle;
using ReportAndLeaveTest = ErroHandle;
using ResumeNextTest = ErroHandle;
using ReportBurstTest = ErroHandle;

void SetPending(int number) { Err.Set({number, RuntimeErrorDescription(number)}); }

void Report(int number, const char* tag = "tag") {
  SetPending(number);
  ReportError(tag);
}

int dispatched = 0;
void CALLBACK CountDispatch(HWND, UINT, UINT_PTR, DWORD) { ++dispatched; }
void CALLBACK FailOtherwise(HWND, UINT, UINT_PTR, DWORD) { SetPending(kTypeMismatch); }

// A window event that waits in the queue of this thread.
void PostTimer(TIMERPROC procedure) {
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // gives the thread a queue
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_TIMER, 1, reinterpret_cast<LPARAM>(procedure));
}

}  // namespace

TEST_F(IsOnlineTest, IsTrueWhenThePageOpens) { EXPECT_TRUE(IsOnline()); }

TEST_F(IsOnlineTest, AsksForTheProbePageUnderTheTitleOfTheApplication) {
  const std::string before = std::exchange(AppTitle, "Some other title");
  EXPECT_TRUE(IsOnline());
  AppTitle = before;
  ASSERT_EQ(Probes(), 1u);
  EXPECT_EQ(Requests().back(), std::string("GET ") + kProbeAddress + " by Some other title");
}

TEST_F(IsOnlineTest, IsFalseAndQuickWhenThePageDoesNotOpen) {
  GoOffline();
  const DWORD start = ::GetTickCount();
  EXPECT_FALSE(IsOnline());
  EXPECT_LT(::GetTickCount() - start, 2000u) << "milliseconds";
}

TEST_F(IsOnlineTest, AsksNobodyElse) {
  UseProxy(std::getenv("QUELLIX_REDIRECTING_PROXY"));
  IsOnline();
  EXPECT_EQ(ReadWhole("C:\\test\\redirected.txt"), std::string("GET ") + kProbeAddress + "\n");
}

TEST_F(IsOnlineTest, IsFalseWithoutAnAddress) {
  EXPECT_FALSE(OpensPage(""));
  EXPECT_EQ(Probes(), 0u);
}

TEST_F(IsOnlineTest, LeavesAPendingErrorAsItIs) {
  SetPending(kDiskFull);
  EXPECT_TRUE(IsOnline());
  GoOffline();
  EXPECT_FALSE(IsOnline());
  EXPECT_EQ(Err.Number(), kDiskFull);
  Err.Clear();
}

TEST_F(IsOnlineTest, LetsWindowEventsRun) {
  dispatched = 0;
  PostTimer(&CountDispatch);
  GoOffline();
  IsOnline();
  EXPECT_EQ(dispatched, 1);
}

TEST_F(ReportErrorTest, ShowsTagNumberAndDescriptionRunTogether) {
  SetPending(kInvalidCall);
  ReportError("Reg32,SaveKeyValue");
  ASSERT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(user.Boxes()[0].text, "Reg32,SaveKeyValue5Invalid procedure call or argument");
  EXPECT_EQ(user.Boxes()[0].title, AppTitle);
  EXPECT_EQ(user.Boxes()[0].buttons, 1) << "OK and no other";
}

TEST_F(ReportErrorTest, TakesTheTitleAsItStands) {
  const std::string before = std::exchange(AppTitle, "Some other title");
  SetPending(kOverflow);
  ReportError("tag");
  AppTitle = before;
  ASSERT_EQ(user.Boxes().size(), 1u);
  EXPECT_EQ(user.Boxes()[0].title, "Some other title");
}

TEST_F(ReportErrorTest, ShowsADescriptionThatIsNotOfTheList) {
  Err.Set({-2147467259, "Unspecified error"});
  ReportError("CURLHistory,Refresh");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"CURLHistory,Refresh-2147467259Unspecified error"}));
}

TEST_F(ReportErrorTest, ShowsNothingAndMakesNoProbeWithoutAnError) {
  ReportError("Reg32,SaveKeyValue");
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(Probes(), 0u);
}

TEST_F(ReportErrorTest, ShowsNothingOffLineAndClearsTheError) {
  GoOffline();
  SetPending(kInvalidCall);
  const DWORD start = ::GetTickCount();
  ReportError("Reg32,SaveKeyValue");
  EXPECT_LT(::GetTickCount() - start, 2000u) << "milliseconds";
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(Err.Number(), 0);
  EXPECT_EQ(Err.Description(), "");
}

TEST_F(ReportErrorTest, ReportsAnErrorOnce) {
  SetPending(kInvalidCall);
  ReportError("first");
  ReportError("second");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"first5Invalid procedure call or argument"}));
}

TEST_F(ReportErrorTest, ReportsItsErrorWhateverFailsInTheWindowEventsMeanwhile) {
  PostTimer(&FailOtherwise);
  SetPending(kDiskFull);
  ReportError("tag");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"tag61Disk full"}));
}

TEST_F(ReportErrorTest, StopsTheTransferBeforeTheMessageAndOnlyThen) {
  void* const session = late::InternetOpen("test", 0, nullptr, nullptr, 0);
  InternetTransfer transfer(late::InternetOpenUrl(session, kProbeAddress, nullptr, 0, 0, 0));
  ASSERT_TRUE(transfer.StillExecuting());
  SetReporterTransfer(&transfer);
  GoOffline();
  SetPending(kInvalidCall);
  ReportError("tag");
  EXPECT_TRUE(transfer.StillExecuting()) << "off line nothing is said, so nothing is stopped";
  GoOnline();
  SetPending(kInvalidCall);
  ReportError("tag");
  EXPECT_FALSE(transfer.StillExecuting());
  EXPECT_EQ(user.Boxes().size(), 1u);
  SetReporterTransfer(nullptr);
  late::InternetCloseHandle(session);
}

TEST_F(ReportAndLeaveTest, SkipsTheRestOfTheBodyAndReports) {
  std::string done;
  reportAndLeave("modShred,DeleteFileShred", [&] {
    done += "a";
    Raise(kPermissionDenied);
    done += "b";
  });
  EXPECT_EQ(done, "a");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"modShred,DeleteFileShred70Permission denied"}));
}

TEST_F(ReportAndLeaveTest, SaysNothingWhenNothingFails) {
  reportAndLeave("tag", [] {});
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(Probes(), 0u);
}

TEST_F(ReportAndLeaveTest, IsNotDisturbedByAnErrorFromBefore) {
  SetPending(kOverflow);
  reportAndLeave("tag", [] {});
  EXPECT_EQ(Err.Number(), kOverflow) << "it is somebody else's";
  Err.Clear();
  EXPECT_EQ(user.Boxes().size(), 0u);
}

TEST_F(ReportAndLeaveTest, ReportsOutOfMemory) {
  reportAndLeave("tag", [] { throw std::bad_alloc(); });
  EXPECT_EQ(Texts(), (std::vector<std::string>{"tag7Out of memory"}));
}

TEST_F(ReportAndLeaveTest, LetsTheOuterBodyGoOnAfterTheInnerReported) {
  std::string done;
  reportAndLeave("outer", [&] {
    reportAndLeave("inner", [] { Raise(kFileNotFound); });
    done += "went on";
  });
  EXPECT_EQ(done, "went on");
  EXPECT_EQ(Texts(), (std::vector<std::string>{"inner53File not found"}));
}

TEST_F(ReportAndLeaveTest, ReportsTheOuterBodysOwnErrorToo) {
  reportAndLeave("outer", [] {
    reportAndLeave("inner", [] { Raise(kFileNotFound); });
    Raise(kPathNotFound);
  });
  EXPECT_EQ(Texts(), (std::vector<std::string>{"inner53File not found", "outer76Path not found"}));
}

TEST_F(ReportAndLeaveTest, LeavesWithTheDefaultAndReportsATextThatIsNoNumber) {
  const ScratchKey key("Software\\QuellixTest\\Report");
  key.PutText("name", "12abc");
  key.PutText("big", "2147483648");
  EXPECT_EQ(GetSettingString(HKEY_CURRENT_USER, key.Path(), "name", 42), 42);
  EXPECT_EQ(GetSettingString(HKEY_CURRENT_USER, key.Path(), "big", 42), 42);
  EXPECT_EQ(GetSettingString(HKEY_CURRENT_USER, key.Path(), "missing", 42), 42);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"Reg32,GetSettingString13Type mismatch", "Reg32,GetSettingString6Overflow"}));
}

TEST_F(ReportAndLeaveTest, ReportsWhatItsOwnBodyRaisedAndNothingElse) {
  Err.Set({kOverflow, "Overflow"});
  reportAndLeave("own", [] { resumeNext([] { Raise(kDiskFull); }); });
  EXPECT_THAT(Texts(), testing::IsEmpty());
  Err.Clear();
}

TEST_F(ResumeNextTest, GoesOnAndLeavesTheLastErrorPending) {
  std::string done;
  resumeNext([&] { done += "a", Raise(kFileNotFound), done += "never"; });
  resumeNext([&] { done += "b"; });
  EXPECT_EQ(Err.Number(), kFileNotFound) << "a statement that works clears nothing";
  resumeNext([&] { Raise(kDiskFull); });
  EXPECT_EQ(done, "ab");
  EXPECT_EQ(Err.Number(), kDiskFull);
  EXPECT_EQ(Err.Description(), "Disk full");
  EXPECT_EQ(user.Boxes().size(), 0u);
  Err.Clear();
}

TEST_F(ResumeNextTest, ReportsEachFailingStatementWhenAskedTo) {
  for (const int number : {kFileNotFound, kPermissionDenied}) {
    resumeNext([&] { Raise(number); });
    ReportError("modShred,DeleteFileShred");
  }
  EXPECT_EQ(Texts(), (std::vector<std::string>{"modShred,DeleteFileShred53File not found",
                                               "modShred,DeleteFileShred70Permission denied"}));
}

TEST_F(ReportErrorTest, SaysNothingAndAsksNothingWhileNothingIsToBeReported) {
  {
    const NoReports outer;
    { const NoReports inner; }
    Report(kDiskFull);
    EXPECT_EQ(Err.Number(), 0) << "the error is cleared all the same";
  }
  EXPECT_EQ(Probes(), 0u);
  EXPECT_EQ(user.Boxes().size(), 0u);
  Report(kDiskFull);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"tag61Disk full"}));
}

TEST_F(ReportBurstTest, AsksOnceWhetherTheMachineIsOnLine) {
  const ReportBurst burst;
  for (int i = 0; i < 100; ++i) Report(kInvalidCall);
  EXPECT_EQ(Probes(), 1u);
  EXPECT_EQ(burst.ReportsForTests(), 100);
  EXPECT_EQ(Err.Number(), 0) << "each report clears its error";
}

TEST_F(ReportBurstTest, ShowsEachMessageOnce) {
  const ReportBurst burst;
  for (int i = 0; i < 3; ++i) {
    Report(kDiskFull);
    Report(kPermissionDenied);
    Report(kDiskFull, "other");
  }
  EXPECT_EQ(Texts(), (std::vector<std::string>{"tag61Disk full", "tag70Permission denied", "other61Disk full"}));
}

TEST_F(ReportBurstTest, ShowsNothingOffLine) {
  GoOffline();
  const ReportBurst burst;
  for (int i = 0; i < 1000; ++i) Report(kInvalidCall);
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(burst.ReportsForTests(), 1000);
}

TEST_F(ReportBurstTest, AsksNothingWithoutAFailure) {
  const ReportBurst burst;
  ReportError("tag");
  EXPECT_EQ(Probes(), 0u);
  EXPECT_EQ(burst.ReportsForTests(), 0);
}

TEST_F(ReportBurstTest, IsPartOfTheBurstAroundIt) {
  const ReportBurst outer;
  Report(kDiskFull);
  for (int i = 0; i < 3; ++i) {
    const ReportBurst inner;
    Report(kDiskFull);
    EXPECT_EQ(inner.ReportsForTests(), 2 + i);
  }
  Report(kDiskFull);
  EXPECT_EQ(Probes(), 1u);
  EXPECT_EQ(outer.ReportsForTests(), 5);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"tag61Disk full"}));
}

TEST_F(ReportBurstTest, EndsWithItsScope) {
  for (int i = 0; i < 2; ++i) {
    const ReportBurst burst;
    Report(kDiskFull);
    EXPECT_EQ(burst.ReportsForTests(), 1);
  }
  GoOffline();
  const ReportBurst burst;
  Report(kDiskFull);
  EXPECT_EQ(user.Boxes().size(), 2u);
}

TEST_F(ReportErrorTest, AsksAndShowsEveryTimeOutsideOfABurst) {
  { const ReportBurst burst; }
  for (int i = 0; i < 3; ++i) Report(kDiskFull);
  EXPECT_EQ(Probes(), 3u);
  EXPECT_EQ(user.Boxes().size(), 3u);
}
