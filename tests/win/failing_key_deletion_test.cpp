// The cleaners that delete keys, where the deletion itself fails as a statement. The machine is on line, so that the user is
// told.
#include <gtest/gtest.h>

#include "cleaners/mdFHCCleaner.h"
#include "cleaners/modCleaning.h"
#include "connection.h"
#include "log_recorder.h"
#include "message_box_user.h"
#include "platform/key_tree.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"

using namespace cleaners;
using namespace platform;

namespace platform {

LONG DeleteKeyTree(HKEY, const char*) { Raise(kDllFunctionNotFound); }

}  // namespace platform

namespace {

using Strings = std::vector<std::string>;

class FailingKeyDeletion : public testing::Test {
 protected:
  void SetUp() override {
    GoOnline();
    Err.Clear(), StopErase = false;
  }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
  }

  Strings Texts() const { return user.Texts(); }

  MessageBoxUser user;
};

}  // namespace

// The capital L in the first is meant.
TEST_F(FailingKeyDeletion, IsReportedUnderEachCleanersNameAlsoAfterAStop) {
  for (const bool stopped : {false, true}) {
    StopErase = stopped;
    Command7();
    ClearRunMRU();
  }
  const Strings once = {"mdFHCCLeaner,Command7453Specified DLL function not found",
                        "mdFHCCleaner,ClearRunMRU453Specified DLL function not found"};
  EXPECT_EQ(Texts(), (Strings{once[0], once[1], once[0], once[1]}));
}

TEST_F(FailingKeyDeletion, IsTheLastStatementOfTheFindCleaner) {
  const LogRecorder log;
  ClearFind();
  EXPECT_EQ(Texts(), Strings{"modCleaning,ClearFind453Specified DLL function not found"});
  EXPECT_TRUE(log.Lines().empty()) << "the statements after the failing one run all the same";
}

TEST_F(FailingKeyDeletion, IsReportedToNobodyOffLine) {
  GoOffline();
  Command7();
  ClearRunMRU();
  EXPECT_EQ(Texts(), Strings());
}

TEST_F(FailingKeyDeletion, IsNeverReportedByThePasswordCleaner) {
  const std::int32_t before = ClearedKeyCount;
  ClearAutoCompletePasswords();
  EXPECT_EQ(Texts(), Strings());
  EXPECT_EQ(ClearedKeyCount, before + 1);
}
