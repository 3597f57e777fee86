// The URL history as a collection, over the real COM and a store that keeps real entries, and over what Wine has instead.
#include <climits>
#include <cstdlib>
#include <new>
#include <thread>

#include "cache_entries.h"
#include "url_history_server.h"

using namespace cleaners;
using namespace platform;

namespace {

using Calls = std::vector<std::string>;
using Texts = std::vector<std::wstring>;
using CURLHistoryTest = HistoryTest;

constexpr wchar_t kA[] = L"http://a/", kB[] = L"http://b/", kC[] = L"http://c/";
const Texts kThree = {kA, kB, kC};

// The numbers of E_FAIL and its like.
constexpr int kFail = static_cast<int>(0x80004005), kNotImplemented = static_cast<int>(0x80004001);

std::size_t failingSize = 0;  // the next allocation of that many bytes fails

Texts UrlsOf(CURLHistory& history) {
  Texts urls;
  for (URLHistoryItem& item : history.NewEnum()) urls.push_back(item.URL());
  return urls;
}

// What a Refresh asks the store for that shows that many entries.
Calls RefreshCalls(std::size_t entries, const std::string& filter = "SetFilter(, 0)") {
  Calls calls = {"EnumUrls", filter};
  calls.insert(calls.end(), entries + 1, "Next(1)");
  calls.push_back("enumerator released");
  return calls;
}

Calls operator+(Calls one, const Calls& other) {
  one.insert(one.end(), other.begin(), other.end());
  return one;
}

}  // namespace

// The allocations of this program, the collection's among them; those of the store's library are its own. Not inline: the
// compiler would take the pairs for mismatched ones.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const memory = size != failingSize ? std::malloc(size) : nullptr;
  if (memory == nullptr) {
    failingSize = 0;
    throw std::bad_alloc();
  }
  return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

// Creation

TEST_F(CURLHistoryTest, HoldsTheEntriesOfTheStoreFromTheStart) {
  server.Plant(kThree);
  CURLHistory history;
  EXPECT_EQ(history.Count(), 3);
  EXPECT_EQ(UrlsOf(history), kThree);
  EXPECT_EQ(server.Calls(), RefreshCalls(3)) << "an empty filter and no flags";
}

TEST_F(CURLHistoryTest, OfAnEmptyStoreHoldsNoItems) {
  CURLHistory history;
  EXPECT_EQ(history.Count(), 0);
  EXPECT_TRUE(history.NewEnum().empty());
  EXPECT_EQ(server.Calls(), RefreshCalls(0));
}

TEST_F(CURLHistoryTest, KeepsTheStoreOpenAndNothingElse) {
  server.Plant(kThree);
  {
    CURLHistory history;
    EXPECT_EQ(server.LiveObjects(), 1);
    EXPECT_EQ(server.OutstandingReferences(), 1);
    history.Clear();
    history.Refresh(L"", 0);
    EXPECT_EQ(server.OutstandingReferences(), 1);
  }
  EXPECT_EQ(server.LiveObjects(), 0);
  EXPECT_EQ(server.OutstandingReferences(), 0);
}

TEST_F(CURLHistoryTest, TwoOfThemShareTheStore) {
  CURLHistory one, other;
  one.AddURL(kA, L"A", 0);
  other.Refresh(L"", 0);
  EXPECT_EQ(UrlsOf(other), Texts{kA});
}

TEST_F(CURLHistoryTest, PassesOnWhateverFailsAtItsStart) {
  server.Plant(kThree);
  for (const char* call : {"EnumUrls", "SetFilter", "Next", "Next 2"}) {
    server.Break({call});
    const RuntimeError error = RaisedError([] { const CURLHistory history; });
    EXPECT_EQ(error.number, kFail) << call;
    EXPECT_STREQ(error.description, "Automation error") << call;
    EXPECT_EQ(server.OutstandingReferences(), 0) << call;
    EXPECT_EQ(spy->LiveBlocks(), 0u) << call;
  }
}

TEST_F(CURLHistoryTest, CannotBeCreatedWhereNoStoreIsInstalled) {
  for (const char* file : {"", "C:\\doubles\\no such library.dll", "kernel32.dll"}) {
    const OtherServer nothing(file);
    const RuntimeError error = RaisedError([] { const CURLHistory history; });
    EXPECT_EQ(error.number, 429) << file;
    EXPECT_STREQ(error.description, "ActiveX component can't create object") << file;
  }
}

TEST_F(CURLHistoryTest, CannotBeCreatedWhenTheStoreRefuses) {
  server.Break({"CreateInstance"});
  EXPECT_EQ(RaisedError([] { const CURLHistory history; }).number, 429);
}

TEST_F(CURLHistoryTest, CannotBeCreatedOnAThreadWithoutCom) {
  RuntimeError error{0, ""};
  std::thread([&] { error = RaisedError([] { const CURLHistory history; }); }).join();
  EXPECT_EQ(error.number, 429);
}

TEST_F(CURLHistoryTest, RaisesWhatWinesOwnStoreAnswersAndLeaksNothing) {
  const OtherServer stub("ieframe.dll");
  RaisedError([] { const CURLHistory first; });  // the library allocates what it keeps for good
  const std::size_t before = spy->LiveBlocks();
  const RuntimeError error = RaisedError([] { const CURLHistory history; });
  EXPECT_EQ(error.number, kNotImplemented);
  EXPECT_STREQ(error.description, "Automation error");
  EXPECT_EQ(spy->LiveBlocks(), before);
}

// Item, NewEnum

TEST_F(CURLHistoryTest, CountsItsItemsFromOne) {
  server.Plant(kThree);
  CURLHistory history;
  EXPECT_EQ(history.Item(1).URL(), kA);
  EXPECT_EQ(history.Item(2).Title(), L"title of http://b/");
  EXPECT_EQ(history.Item(3).URL(), kC);
}

TEST_F(CURLHistoryTest, AnIndexOutsideOfItRaisesSubscriptOutOfRange) {
  server.Plant(kThree);
  CURLHistory history;
  for (const std::int32_t index : {0, 4, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(RaisedError([&] { history.Item(index); }).number, 9) << index;
    EXPECT_STREQ(RaisedError([&] { history.Item(index); }).description, "Subscript out of range") << index;
  }
}

TEST_F(CURLHistoryTest, AnEmptyOneHasNoFirstItem) {
  CURLHistory history;
  EXPECT_EQ(RaisedError([&] { history.Item(1); }).number, 9);
}

TEST_F(CURLHistoryTest, ALoopOverItUsesTheItemsThemselves) {
  HistoryEntry entry;
  entry.expires = 126227808000000000;
  server.Plant({entry, entry});
  CURLHistory history;
  std::vector<URLHistoryItem*> items;
  for (URLHistoryItem& item : history.NewEnum()) items.push_back(&item);
  EXPECT_EQ(items, (std::vector<URLHistoryItem*>{&history.Item(1), &history.Item(2)}));
}

// AddURL

TEST_F(CURLHistoryTest, AddURLHandsTextsAndFlagsToTheStoreAndLeavesTheCollection) {
  CURLHistory history;
  server.Calls();
  history.AddURL(kA, L"A title", 1);
  EXPECT_EQ(server.Calls(), Calls{"AddUrl(http://a/, A title, 1)"});
  EXPECT_EQ(server.Urls(), Texts{kA});
  EXPECT_EQ(history.Count(), 0) << "the old count, until a refresh";
  history.Refresh(L"", 0);
  EXPECT_EQ(history.Count(), 1);
  EXPECT_EQ(history.Item(1).Title(), L"A title");
}

TEST_F(CURLHistoryTest, AddURLWithoutATitleMakesAnEntryWithoutOne) {
  CURLHistory history;
  history.AddURL(kA, L"", 0);
  history.Refresh(L"", 0);
  EXPECT_EQ(history.Item(1).Title(), L"     (No Title Given)");
}

TEST_F(CURLHistoryTest, AddURLPassesAFailureOn) {
  CURLHistory history;
  server.Break({"AddUrl"});
  const RuntimeError error = RaisedError([&] { history.AddURL(kA, L"A", 0); });
  EXPECT_EQ(error.number, kFail);
  EXPECT_STREQ(error.description, "Automation error");
}

// Refresh

TEST_F(CURLHistoryTest, RefreshReplacesTheCollection) {
  server.Plant(kThree);
  CURLHistory history;
  server.Plant({L"http://d/"});
  EXPECT_EQ(UrlsOf(history), kThree) << "until the refresh";
  history.Refresh(L"", 0);
  EXPECT_EQ(UrlsOf(history), Texts{L"http://d/"});
  history.Refresh(L"", 0);
  EXPECT_EQ(UrlsOf(history), Texts{L"http://d/"}) << "nothing is appended to what was there";
}

TEST_F(CURLHistoryTest, RefreshShowsWhatTheFilterOfTheStoreLetsThrough) {
  server.Plant({L"http://a/1", L"http://b/1", L"http://a/2"});
  CURLHistory history;
  server.Calls();
  history.Refresh(L"http://a/", STATURL_QUERYFLAG_NOTITLE);
  EXPECT_EQ(UrlsOf(history), (Texts{L"http://a/1", L"http://a/2"}));
  EXPECT_EQ(history.Item(2).Title(), L"     (No Title Given)");
  EXPECT_EQ(server.Calls(), RefreshCalls(2, "SetFilter(http://a/, 262144)"));
  history.Refresh(L"http://none/", 0);
  EXPECT_EQ(history.Count(), 0);
}

TEST_F(CURLHistoryTest, RefreshLeavesTheCollectionWhenTheStoreCannotBeAsked) {
  server.Plant(kThree);
  CURLHistory history;
  for (const char* call : {"EnumUrls", "SetFilter"}) {
    server.Break({call});
    EXPECT_EQ(RaisedError([&] { history.Refresh(L"", 0); }).number, kFail) << call;
    EXPECT_EQ(UrlsOf(history), kThree) << call;
    EXPECT_EQ(server.OutstandingReferences(), 1) << call;
  }
}

TEST_F(CURLHistoryTest, ARefreshThatFailsMidwayKeepsWhatItHasRead) {
  server.Plant(kThree);
  CURLHistory history;
  server.Break({"Next 2"});
  EXPECT_EQ(RaisedError([&] { history.Refresh(L"", 0); }).number, kFail);
  EXPECT_EQ(UrlsOf(history), (Texts{kA, kB}));
  EXPECT_EQ(server.OutstandingReferences(), 1);
  EXPECT_EQ(spy->LiveBlocks(), 4u);
  server.Break({"Next"});
  EXPECT_EQ(RaisedError([&] { history.Refresh(L"", 0); }).number, kFail);
  EXPECT_EQ(history.Count(), 0);
}

TEST_F(CURLHistoryTest, AnEntryThatFindsNoMemoryInTheCollectionIsFreed) {
  server.Plant({kA});
  CURLHistory history;
  server.Plant(kThree);
  failingSize = 2 * sizeof(URLHistoryItem);  // when the collection, made for one item, grows for the second
  resumeNext([&] { history.Refresh(L"", 0); });
  EXPECT_EQ(failingSize, 0u);
  EXPECT_EQ(Err.Number(), 7);
  EXPECT_EQ(UrlsOf(history), Texts{kA});
  EXPECT_EQ(spy->LiveBlocks(), 2u) << "the texts of the one item that is held";
  Err.Clear();
}

// Remove

TEST_F(CURLHistoryTest, RemoveTakesAnItemFromTheStoreAndThenFromTheCollection) {
  server.Plant(kThree);
  CURLHistory history;
  server.Calls();
  history.Remove(2);
  EXPECT_EQ(server.Calls(), Calls{"DeleteUrl(http://b/, 0)"}) << "without a refresh";
  EXPECT_EQ(server.Urls(), (Texts{kA, kC}));
  EXPECT_EQ(UrlsOf(history), (Texts{kA, kC}));
  history.Remove(1);
  history.Remove(1);
  EXPECT_EQ(history.Count(), 0);
  EXPECT_TRUE(server.Urls().empty());
  EXPECT_EQ(spy->LiveBlocks(), 0u);
}

TEST_F(CURLHistoryTest, RemoveOfNoItemRaisesSubscriptOutOfRangeAndLeavesTheStoreAlone) {
  server.Plant(kThree);
  CURLHistory history;
  server.Calls();
  for (const std::int32_t index : {0, 4, -1}) EXPECT_EQ(RaisedError([&] { history.Remove(index); }).number, 9) << index;
  EXPECT_EQ(server.Calls(), Calls{});
  EXPECT_EQ(history.Count(), 3);
}

TEST_F(CURLHistoryTest, RemoveKeepsAnItemThatTheStoreDoesNotDelete) {
  server.Plant(kThree);
  CURLHistory history;
  server.Break({"DeleteUrl"});
  EXPECT_EQ(RaisedError([&] { history.Remove(2); }).number, kFail);
  EXPECT_EQ(UrlsOf(history), kThree);
}

// DeleteURL

TEST_F(CURLHistoryTest, DeleteURLDeletesFromTheStoreAndRefreshes) {
  server.Plant(kThree);
  CURLHistory history;
  server.Plant({kA, kB, L"http://new/"});
  server.Calls();
  history.DeleteURL(kA, 1);
  EXPECT_EQ(server.Calls(), Calls{"DeleteUrl(http://a/, 1)"} + RefreshCalls(2));
  EXPECT_EQ(UrlsOf(history), (Texts{kB, L"http://new/"}));
}

TEST_F(CURLHistoryTest, DeleteURLIgnoresAFailureAndStillRefreshes) {
  server.Plant(kThree);
  CURLHistory history;
  server.Plant({kB});
  history.DeleteURL(L"http://nowhere/", 0);
  EXPECT_EQ(UrlsOf(history), Texts{kB});
  EXPECT_EQ(Err.Number(), 0);
}

TEST_F(CURLHistoryTest, DeleteURLIgnoresARefreshThatFails) {
  server.Plant(kThree);
  CURLHistory history;
  server.Break({"EnumUrls"});
  history.DeleteURL(kA, 0);
  EXPECT_EQ(server.Urls(), (Texts{kB, kC}));
  EXPECT_EQ(UrlsOf(history), kThree) << "what the last refresh read";
  EXPECT_EQ(Err.Number(), 0);
}

// Clear

TEST_F(CURLHistoryTest, ClearEmptiesTheStoreAndThenRefreshes) {
  server.Plant(kThree);
  CURLHistory history;
  server.Calls();
  history.Clear();
  EXPECT_EQ(server.Calls(), Calls{"ClearHistory"} + RefreshCalls(0)) << "an empty filter and no flags";
  EXPECT_EQ(history.Count(), 0);
  EXPECT_TRUE(server.Urls().empty());
  EXPECT_EQ(server.OutstandingReferences(), 1);
  history.Clear();
  EXPECT_EQ(history.Count(), 0);
}

TEST_F(CURLHistoryTest, ClearTakesTheHistoryEntriesOfTheUrlCacheAlong) {
  MakeVisited("http://a/");
  MakeContent("http://kept/", 10);
  ASSERT_TRUE(IsCached(VisitedUrl("http://a/")));
  CURLHistory history;
  history.Clear();
  EXPECT_FALSE(IsCached(VisitedUrl("http://a/")));
  EXPECT_TRUE(IsCached("http://kept/"));
}

TEST_F(CURLHistoryTest, ClearStillRefreshesWhenTheStoreCannotBeEmptied) {
  for (const char* fault : {"ClearHistory", "IUrlHistoryStg2"}) {
    server.Plant(kThree);
    server.Break({fault});
    CURLHistory history;
    server.Plant({kA});
    history.Clear();
    EXPECT_EQ(UrlsOf(history), Texts{kA}) << fault;
    EXPECT_EQ(Err.Number(), 0) << fault;
    EXPECT_EQ(server.OutstandingReferences(), 1) << fault;
  }
}

TEST_F(CURLHistoryTest, ClearWithoutTheSecondInterfaceDoesNotCallIt) {
  server.Break({"IUrlHistoryStg2"});
  CURLHistory history;
  server.Calls();
  history.Clear();
  EXPECT_EQ(server.Calls(), RefreshCalls(0));
}

TEST_F(CURLHistoryTest, ClearIgnoresARefreshThatFails) {
  server.Plant(kThree);
  CURLHistory history;
  server.Break({"EnumUrls"});
  history.Clear();
  EXPECT_TRUE(server.Urls().empty());
  EXPECT_EQ(UrlsOf(history), kThree) << "what the last refresh read";
  EXPECT_EQ(Err.Number(), 0);
}

// The store of the tests itself, where the collection does not use it

TEST_F(CURLHistoryTest, IsTestedOnAStoreThatSkipsResetsClonesAndQueries) {
  server.Plant(kThree);
  void* created = nullptr;
  constexpr GUID kClass = {0x3C374A40, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
  ASSERT_EQ(::CoCreateInstance(kClass, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUrlHistoryStg2), &created), S_OK);
  const UniqueInterface<IUrlHistoryStg2> store(static_cast<IUrlHistoryStg2*>(created));
  IEnumSTATURL* opened = nullptr;
  ASSERT_EQ(store.get()->EnumUrls(&opened), S_OK);
  const UniqueInterface<IEnumSTATURL> records(opened);
  const auto next = [](IEnumSTATURL* from) {
    STATURL record{};
    record.cbSize = sizeof record;
    ULONG fetched = 0;
    return from->Next(1, &record, &fetched) == S_OK ? URLHistoryItem(record).URL() : L"";
  };
  EXPECT_EQ(records.get()->Skip(1), S_OK);
  IEnumSTATURL* cloned = nullptr;
  ASSERT_EQ(records.get()->Clone(&cloned), S_OK);
  const UniqueInterface<IEnumSTATURL> clone(cloned);
  EXPECT_EQ(next(records.get()), kB);
  EXPECT_EQ(next(clone.get()), kB);
  EXPECT_EQ(records.get()->Skip(2), S_FALSE) << "one is left";
  EXPECT_EQ(next(records.get()), L"");
  EXPECT_EQ(records.get()->Reset(), S_OK);
  EXPECT_EQ(next(records.get()), kA);
  STATURL found{};
  found.cbSize = sizeof found;
  EXPECT_EQ(store.get()->QueryUrl(kC, 0, &found), S_OK);
  EXPECT_EQ(URLHistoryItem(found).Title(), L"title of http://c/");
  EXPECT_EQ(store.get()->QueryUrl(L"http://nowhere/", 0, nullptr), E_FAIL);
}
