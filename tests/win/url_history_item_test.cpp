// Entries of the URL history as the store hands them out: texts, dates, and who frees what. The time zone is that of the
// test's preparation, another one for each Windows version.
#include <cmath>
#include <cstdlib>

#include "url_history_server.h"

using namespace cleaners;
using namespace platform;

namespace {

constexpr double kVisited = 36925.5, kUpdated = 36926.25, kExpires = 36945.75;  // 3 February 2001, noon, and later
constexpr double kHalfASecond = 0.5 / 86400;

// From an automation date to a file time: hundreds of nanoseconds since 1601.
constexpr std::uint64_t ToTicks(double date) { return static_cast<std::uint64_t>((date + 109205) * 86400) * 10000000; }

// How far local time is ahead of universal time.
double ZoneDays() {
  const char* const minutes = std::getenv("QUELLIX_TEST_ZONE_MINUTES");
  return std::atoi(minutes != nullptr ? minutes : "the preparation of this test names no zone") / 1440.0;
}

class URLHistoryItemTest : public HistoryTest {
 protected:
  // The store's only entry.
  static HistoryEntry Entry(const std::wstring& url, const std::wstring& title) {
    return {ToTicks(kVisited), ToTicks(kUpdated), ToTicks(kExpires), 0, url, title};
  }
  void PlantTimes(std::uint64_t visited) const {
    HistoryEntry entry = Entry(L"http://a/", L"A");
    entry.lastVisited = visited;
    server.Plant({entry});
  }
};

}  // namespace

TEST_F(URLHistoryItemTest, GivesTheTextsAndFlagsOfItsEntry) {
  HistoryEntry entry = Entry(L"http://a.example/page?q=1#there", L"A page");
  entry.flags = 0x80000003;
  server.Plant({entry});
  CURLHistory history;
  const URLHistoryItem& item = history.Item(1);
  EXPECT_EQ(item.URL(), L"http://a.example/page?q=1#there");
  EXPECT_EQ(item.Title(), L"A page");
  EXPECT_EQ(item.Flags(), 0x80000003u);
}

TEST_F(URLHistoryItemTest, GivesTextsThatTheCodePageCannotHoldAndLongOnes) {
  const std::wstring url = L"http://\u043F\u0440\u0438\u043C\u0435\u0440/" + std::wstring(5000, L'x');
  server.Plant({Entry(url, L"\u65E5\u672C\u8A9E \U0001F600")});
  CURLHistory history;
  EXPECT_EQ(history.Item(1).URL(), url);
  EXPECT_EQ(history.Item(1).Title(), L"\u65E5\u672C\u8A9E \U0001F600");
}

TEST_F(URLHistoryItemTest, AnEntryWithNoTitleReadsAsNoTitleGiven) {
  server.Plant({Entry(L"http://a/", L"")});
  CURLHistory history;
  EXPECT_EQ(history.Item(1).Title(), L"     (No Title Given)") << "five blanks";
  EXPECT_EQ(spy->LiveBlocks(), 1u) << "the store hands out no title";
}

TEST_F(URLHistoryItemTest, AnEmptyTitleReadsAsNoTitleGiven) {
  server.Plant({Entry(L"http://a/", L"")});
  server.Break({"empty titles"});
  CURLHistory history;
  EXPECT_EQ(history.Item(1).Title(), L"     (No Title Given)");
  EXPECT_EQ(spy->LiveBlocks(), 2u) << "the store hands out an empty title";
}

TEST_F(URLHistoryItemTest, ATitleOfBlanksIsATitle) {
  server.Plant({Entry(L"http://a/", L" ")});
  CURLHistory history;
  EXPECT_EQ(history.Item(1).Title(), L" ");
}

TEST_F(URLHistoryItemTest, AnEntryWithoutAUrlHasAnEmptyOne) {
  server.Plant({Entry(L"http://a/", L"A")});
  CURLHistory history;
  history.Refresh(L"", STATURL_QUERYFLAG_NOURL);
  EXPECT_EQ(history.Item(1).URL(), L"");
  EXPECT_EQ(history.Item(1).Title(), L"A");
}

TEST_F(URLHistoryItemTest, TheFirstReadOfEachDateIsLocalTime) {
  server.Plant({Entry(L"http://a/", L"A")});
  CURLHistory history;
  URLHistoryItem& item = history.Item(1);
  EXPECT_NEAR(item.LastVisited(), kVisited + ZoneDays(), kHalfASecond);
  EXPECT_NEAR(item.Expires(), kExpires + ZoneDays(), kHalfASecond);
  EXPECT_NEAR(item.LastUpdated(), kUpdated + ZoneDays(), kHalfASecond);
}

TEST_F(URLHistoryItemTest, EveryReadMovesTheDateByTheZoneOnceMore) {
  server.Plant({Entry(L"http://a/", L"A")});
  CURLHistory history;
  URLHistoryItem& item = history.Item(1);
  for (int read = 1; read <= 4; ++read) {
    EXPECT_NEAR(item.LastVisited(), kVisited + read * ZoneDays(), kHalfASecond) << read;
    EXPECT_NEAR(item.Expires(), kExpires + read * ZoneDays(), kHalfASecond) << read;
    EXPECT_NEAR(item.LastUpdated(), kUpdated + read * ZoneDays(), kHalfASecond) << read;
  }
}

TEST_F(URLHistoryItemTest, ReadingOneDateLeavesTheOthersAlone) {
  server.Plant({Entry(L"http://a/", L"A")});
  CURLHistory history;
  URLHistoryItem& item = history.Item(1);
  for (int read = 1; read <= 3; ++read) item.Expires();
  EXPECT_NEAR(item.LastVisited(), kVisited + ZoneDays(), kHalfASecond);
}

TEST_F(URLHistoryItemTest, ARefreshStartsAgainFromTheStoredTime) {
  server.Plant({Entry(L"http://a/", L"A")});
  CURLHistory history;
  for (int read = 1; read <= 3; ++read) history.Item(1).Expires();
  history.Refresh(L"", 0);
  EXPECT_NEAR(history.Item(1).Expires(), kExpires + ZoneDays(), kHalfASecond);
}

TEST_F(URLHistoryItemTest, GivesDatesFromThe17thCenturyToTheYear9999) {
  for (const double date : {-109204.0, -1.0, 0.0, 1.0, 2958464.0}) {
    PlantTimes(ToTicks(date));
    CURLHistory history;
    // Before the day zero the fraction counts forward from a negative day.
    const double local = date + ZoneDays();
    const double day = std::floor(local);
    EXPECT_NEAR(history.Item(1).LastVisited(), local >= 0 ? local : day - (local - day), kHalfASecond) << date;
  }
}

TEST_F(URLHistoryItemTest, ATimeThatIsNoDateRaisesAnErrorAtEveryRead) {
  for (const std::uint64_t time : {0x8000000000000000u + 864000000000u, 0xFFFFFF0000000000u, ToTicks(2958467)}) {
    PlantTimes(time);
    CURLHistory history;
    EXPECT_EQ(RaisedError([&] { history.Item(1).LastVisited(); }).number, 5) << std::hex << time;
    EXPECT_EQ(RaisedError([&] { history.Item(1).LastVisited(); }).number, 5) << std::hex << time;
    EXPECT_NEAR(history.Item(1).Expires(), kExpires + ZoneDays(), kHalfASecond);
  }
}

TEST_F(URLHistoryItemTest, WestOfUniversalTimeTheStartOf1601IsNoDate) {
  PlantTimes(0);
  CURLHistory history;
  EXPECT_EQ(RaisedError([&] { history.Item(1).LastVisited(); }).number, ZoneDays() < 0 ? 5 : 0);
}

TEST_F(URLHistoryItemTest, FreesTheTitleBeforeTheUrl) {
  server.Plant({Entry(L"http://a/", L"A"), Entry(L"http://b/", L"B")});
  { const CURLHistory history; }
  const std::vector<std::wstring> freed = spy->FreedTexts();
  ASSERT_EQ(freed.size(), 4u);
  EXPECT_EQ(std::vector(freed.begin(), freed.begin() + 2), (std::vector<std::wstring>{L"A", L"http://a/"}));
  EXPECT_EQ(std::vector(freed.begin() + 2, freed.end()), (std::vector<std::wstring>{L"B", L"http://b/"}));
}

TEST_F(URLHistoryItemTest, AMovedItemTakesItsTextsAlong) {
  server.Plant({Entry(L"http://a/", L"A"), Entry(L"http://b/", L"B")});
  CURLHistory history;
  {
    URLHistoryItem taken = std::move(history.Item(1));
    EXPECT_EQ(taken.Title(), L"A");
    EXPECT_EQ(history.Item(1).URL(), L"");
    EXPECT_TRUE(spy->FreedTexts().empty());
  }
  EXPECT_EQ(spy->FreedTexts(), (std::vector<std::wstring>{L"A", L"http://a/"}));
  {
    URLHistoryItem taken = std::move(history.Item(2));
    taken = std::move(history.Item(1));
    EXPECT_EQ(taken.URL(), L"");
    taken = std::move(taken);
  }
}

TEST_F(URLHistoryItemTest, TenThousandEntriesLeaveNoTextBehind) {
  constexpr int kMany = 10000;
  std::vector<HistoryEntry> entries;
  for (int number = 0; number < kMany; ++number)
    entries.push_back(Entry(L"http://site/" + std::to_wstring(number), L"title " + std::to_wstring(number)));
  server.Plant(entries);
  {
    CURLHistory history;
    ASSERT_EQ(history.Count(), kMany);
    EXPECT_EQ(history.Item(kMany).URL(), L"http://site/9999");
    EXPECT_EQ(spy->LiveBlocks(), 2u * kMany);
    history.Refresh(L"", 0);
    EXPECT_EQ(spy->LiveBlocks(), 2u * kMany);
  }
  EXPECT_EQ(spy->LiveBlocks(), 0u);
  EXPECT_EQ(spy->FreedTexts().size(), 4u * kMany);
}
