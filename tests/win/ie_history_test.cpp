// The cleaner of the browser's history, over the tests' store and over what Wine has instead of one.
#include <algorithm>

#include "cleaners/mdFHCCleaner.h"
#include "connection.h"
#include "message_box_user.h"
#include "platform/stop_request.h"
#include "url_history_server.h"

using namespace cleaners;
using namespace platform;

namespace {

const std::vector<std::wstring> kThree = {L"http://a/", L"http://b/", L"http://c/"};

class ClearIEHistoryTest : public HistoryTest {
 protected:
  void SetUp() override {
    StopErase = false;
    GoOnline();
    HistoryTest::SetUp();
  }
  void TearDown() override {
    StopErase = false;
    HistoryTest::TearDown();
  }

  std::vector<std::string> Reports() const {
    std::vector<std::string> texts;
    for (const ShownBox& box : user.Boxes()) texts.push_back(box.text);
    return texts;
  }

  MessageBoxUser user;
};

using Strings = std::vector<std::string>;

}  // namespace

TEST_F(ClearIEHistoryTest, EmptiesTheStoreAndSaysNothing) {
  server.Plant(kThree);
  ClearIEHistory();
  EXPECT_TRUE(server.Urls().empty());
  EXPECT_EQ(Reports(), Strings());
}

TEST_F(ClearIEHistoryTest, ClearsOnceAndReadsAnewAfterwards) {
  server.Plant(kThree);
  ClearIEHistory();
  const Strings calls = server.Calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ClearHistory"), 1);
  const auto cleared = std::find(calls.begin(), calls.end(), "ClearHistory");
  EXPECT_EQ(std::count(calls.begin(), cleared, "EnumUrls"), 1) << "by its creation";
  EXPECT_EQ(std::count(cleared, calls.end(), "EnumUrls"), 2) << "by the clearing and by the refresh after it";
  EXPECT_EQ(std::count(cleared, calls.end(), "SetFilter(, 0)"), 2);
}

TEST_F(ClearIEHistoryTest, TakesAnEmptyStoreAsItIs) {
  ClearIEHistory();
  ClearIEHistory();
  EXPECT_TRUE(server.Urls().empty());
  EXPECT_EQ(Reports(), Strings());
}

TEST_F(ClearIEHistoryTest, DoesNothingAfterAStop) {
  server.Plant(kThree);
  StopErase = true;
  ClearIEHistory();
  EXPECT_EQ(server.Urls(), kThree);
  EXPECT_EQ(server.Calls(), Strings());
}

TEST_F(ClearIEHistoryTest, SaysNothingWhenTheStoreCannotBeCleared) {
  for (const char* fault : {"ClearHistory", "IUrlHistoryStg2"}) {
    server.Plant(kThree);
    server.Break({fault});
    ClearIEHistory();
    EXPECT_EQ(server.Urls(), kThree) << fault;
    EXPECT_EQ(Reports(), Strings()) << fault;
  }
}

TEST_F(ClearIEHistoryTest, ReportsAStoreThatCannotBeReadWhileTheMachineIsOnLine) {
  server.Plant(kThree);
  server.Break({"EnumUrls"});
  ClearIEHistory();
  EXPECT_EQ(Reports(), Strings{"mdFHCCleaner,ClearIEHistory-2147467259Automation error"});
  EXPECT_EQ(server.Urls(), kThree) << "the cleaner is left before it clears";
}

TEST_F(ClearIEHistoryTest, ReportsWinesOwnStoreWhileTheMachineIsOnLine) {
  const OtherServer stub("ieframe.dll");
  ClearIEHistory();
  EXPECT_EQ(Reports(), Strings{"mdFHCCleaner,ClearIEHistory-2147467263Automation error"});
}

TEST_F(ClearIEHistoryTest, ReportsAMissingStoreWhileTheMachineIsOnLine) {
  const OtherServer none("");
  ClearIEHistory();
  EXPECT_EQ(Reports(), Strings{"mdFHCCleaner,ClearIEHistory429ActiveX component can't create object"});
}

TEST_F(ClearIEHistoryTest, SaysNothingOfAnyFailureOffLine) {
  GoOffline();
  for (const char* file : {"", "ieframe.dll"}) {
    const OtherServer other(file);
    ClearIEHistory();
  }
  server.Break({"EnumUrls"});
  ClearIEHistory();
  EXPECT_EQ(Reports(), Strings());
}
