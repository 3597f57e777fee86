// A system that lacks every function that is bound late: hiding and rebooting go on with their next statement.
#include <gtest/gtest.h>

#include "automation/modHide.h"
#include "automation/modReboot.h"
#include "exit_windows.h"
#include "platform/late_binding.h"
#include "platform/os_name.h"
#include "platform/runtime_error.h"

using namespace automation;
using namespace platform;

namespace platform {

FARPROC FindSystemFunction(const char*, const char*) { return nullptr; }
bool IsSystemDllPresent(const char*) { return true; }

}  // namespace platform

namespace {

class WithoutTheFunction : public testing::Test {
 protected:
  void SetUp() override { Err.Clear(); }
  void TearDown() override { Err.Clear(); }
};

}  // namespace

TEST_F(WithoutTheFunction, TheTaskListIsLeftAsItIs) {
  OsName = "";  // a system later than those that have names
  HideFromTaskList();
  UnhideFromTaskList();
  EXPECT_EQ(Err.Number(), kDllFunctionNotFound);
}

TEST_F(WithoutTheFunction, TheRebootIsAskedForWithoutThePrivilege) {
  ASSERT_TRUE(IsWinNT());
  RebootSystem(true);
  ASSERT_EQ(ExitWindowsCalls.size(), 1u);
  EXPECT_EQ(ExitWindowsCalls[0], (ExitWindowsCall{6, 0}));
}
