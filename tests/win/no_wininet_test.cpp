// A Windows that has no wininet.dll (the test's preparation takes it away) is off line and nothing more.
#include <gtest/gtest.h>

#include "message_box_user.h"
#include "platform/ErroHandle.h"
#include "platform/internet_transfer.h"
#include "platform/system_functions.h"

TEST(WithoutWininet, TheMachineIsOffLine) {
  ASSERT_FALSE(IsSystemDllPresent("wininet.dll"));
  Err.Clear();
  EXPECT_FALSE(IsOnline());
}

TEST(WithoutWininet, AnErrorPassesSilently) {
  const MessageBoxUser user;
  Err.Set({kInvalidCall, RuntimeErrorDescription(kInvalidCall)});
  ReportError("Reg32,SaveKeyValue");
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(Err.Number(), 0);
}

TEST(WithoutWininet, CallingItRaisesTheErrorOfAMissingDll) {
  int number = 0;
  try {
    late::InternetOpen("test", 0, nullptr, nullptr, 0);
  } catch (const RuntimeError& error) {
    number = error.number;
  }
  EXPECT_EQ(number, kDllNotLoaded);
}
