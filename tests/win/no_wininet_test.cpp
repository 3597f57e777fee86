// A Windows that has no wininet.dll (the test's preparation takes it away) is off line and has no URL cache, nothing more.
#include <gtest/gtest.h>

#include "cleaners/cache_walks.h"
#include "cleaners/url_cache_walk.h"
#include "message_box_user.h"
#include "platform/ErroHandle.h"
#include "platform/internet_transfer.h"
#include "platform/stop_request.h"
#include "platform/system_functions.h"

using namespace cleaners;
using namespace platform;

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

TEST(WithoutWininet, TheCacheHasNoEntries) {
  UrlCacheWalk walk(nullptr);
  for (int more = 0; more < 2; ++more) EXPECT_FALSE(walk.Next());
  EXPECT_EQ(walk.Url(), "");
  walk.DeleteEntry();
  Err.Clear();
}

TEST(WithoutWininet, BothWalksOverTheCacheRemoveNothingAndSayNothing) {
  const MessageBoxUser user;
  Err.Clear(), StopErase = false;
  EXPECT_EQ(ClearUrlCache(), 0);
  EXPECT_EQ(ClearCookies(), 0);
  EXPECT_EQ(user.Boxes().size(), 0u);
  EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
}
