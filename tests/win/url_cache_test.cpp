// The walks over the browser's URL cache, on the real cache of the current user.
#include <gtest/gtest.h>

#include "ansi_paths.h"
#include "cache_entries.h"
#include "cleaners/cache_walks.h"
#include "cleaners/url_cache_walk.h"
#include "cookies/keep_list.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "run_item.h"
#include "window_event.h"

using namespace cleaners;
using namespace cookies;
using namespace erase;
using namespace platform;

namespace {

constexpr EntryKind kContent = EntryKind::Content, kCookie = EntryKind::Cookie, kVisited = EntryKind::Visited;

// Also told what to do when it is asked.
class NamesToKeep : public KeepList {
 public:
  explicit NamesToKeep(std::vector<std::string> names) : names_(std::move(names)) { lstSafeList = this; }
  NamesToKeep(const NamesToKeep&) = delete;
  NamesToKeep& operator=(const NamesToKeep&) = delete;
  ~NamesToKeep() { lstSafeList = nullptr; }

  bool Holds(const WideText& cookieName) const override {
    asked.push_back(TextOf(cookieName));
    if (whenAsked) whenAsked();
    return std::any_of(names_.begin(), names_.end(),
                       [&](const std::string& name) { return IsSameCookie(Widen(name), cookieName); });
  }

  mutable std::vector<std::string> asked;
  std::function<void()> whenAsked;

 private:
  std::vector<std::string> names_;
};

class UrlCacheTest : public testing::Test {
 protected:
  void SetUp() override {
    EmptyTheCache();
    ASSERT_EQ(CachedUrls(), std::vector<std::string>());
    Err.Clear(), StopErase = false;
  }
  void TearDown() override {
    StopErase = false;
    EXPECT_EQ(Err.Number(), 0) << "an error is left pending: " << Err.Description();
    EmptyTheCache();
  }

  static void MakeOneOfEach() {
    ASSERT_NE(MakeContent("http://site.example/page.html", 100), "");
    ASSERT_NE(MakeCookie("user@site", 20), "");
    ASSERT_TRUE(MakeVisited("http://site.example/"));
  }

  // Their files, in the order of their making; each as many bytes long as its number.
  static std::vector<std::string> MakePages(int count) {
    std::vector<std::string> files;
    for (int page = 1; page <= count; ++page)
      files.push_back(MakeContent("http://site.example/page" + std::to_string(page), static_cast<std::size_t>(page)));
    return files;
  }

  static std::vector<std::string> MakeCookies(int count) {
    std::vector<std::string> files;
    for (int cookie = 1; cookie <= count; ++cookie) files.push_back(MakeCookie("user@site" + std::to_string(cookie), 10));
    return files;
  }

  static std::ptrdiff_t CountThere(const std::vector<std::string>& files) {
    return std::count_if(files.begin(), files.end(), [](const std::string& file) { return IsThere(file); });
  }

  WindowEvents events;
};
using UrlCacheWalkTest = UrlCacheTest;
using ClearUrlCacheTest = UrlCacheTest;
using ClearCookiesTest = UrlCacheTest;

std::string NameOf(const std::string& path) { return path.substr(path.rfind('\\') + 1); }
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('\\')); }

// Keeps an entry from being deleted, as a program does that reads its file.
class EntryInUse {
 public:
  explicit EntryInUse(const std::string& url) : url_(url) {
    char entry[4096];
    DWORD size = sizeof entry;
    held_ = cache::Retrieve(url.c_str(), entry, &size, 0) != 0;
  }
  EntryInUse(const EntryInUse&) = delete;
  EntryInUse& operator=(const EntryInUse&) = delete;
  ~EntryInUse() { cache::Unlock(url_.c_str(), 0); }

  explicit operator bool() const { return held_; }

 private:
  std::string url_;
  bool held_ = false;
};

}  // namespace

// The entries one after another

TEST_F(UrlCacheWalkTest, GivesEveryEntryWithItsUrlAndItsFile) {
  const std::string page = MakeContent("http://site.example/page.html", 100);
  const std::string cookie = MakeCookie("user@site", 20);
  ASSERT_TRUE(MakeVisited("http://site.example/"));
  std::vector<std::pair<std::string, std::string>> found;
  for (UrlCacheWalk walk(nullptr); walk.Next();) found.emplace_back(walk.Url(), TextOf(walk.LocalFile()));
  std::sort(found.begin(), found.end());
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"Cookie:user@site/", cookie}, {"Visited: user@http://site.example/", ""}, {"http://site.example/page.html", page}};
  EXPECT_EQ(found, expected);
}

TEST_F(UrlCacheWalkTest, KnowsNothingOfTheLastEntryBehindTheEnd) {
  MakePages(1);
  UrlCacheWalk walk(nullptr);
  EXPECT_EQ(walk.Url(), "") << "before the first";
  ASSERT_TRUE(walk.Next());
  for (int more = 0; more < 3; ++more) {
    EXPECT_FALSE(walk.Next());
    EXPECT_EQ(walk.Url(), "");
    EXPECT_EQ(walk.LocalFile(), L"");
    walk.DeleteEntry();
  }
  EXPECT_EQ(CountEntries(kContent), 1);
}

TEST_F(UrlCacheWalkTest, EndsAtOnceInAnEmptyCache) {
  UrlCacheWalk walk(nullptr);
  EXPECT_FALSE(walk.Next());
  EXPECT_FALSE(walk.Next());
}

TEST_F(UrlCacheWalkTest, ReadsARecordOf64KilobytesAndAUrlOf2000Characters) {
  const std::string longUrl = "http://site.example/" + std::string(1980, 'u');
  ASSERT_NE(MakeContent("http://site.example/header", 1, std::string(65000, 'h')), "");
  ASSERT_NE(MakeContent(longUrl, 1), "");
  std::vector<std::string> found;
  for (UrlCacheWalk walk(nullptr); walk.Next();) found.push_back(walk.Url());
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, (std::vector<std::string>{"http://site.example/header", longUrl}));
}

TEST_F(UrlCacheWalkTest, DeletesTheEntryThatItStandsAt) {
  MakePages(5);
  std::string deleted;
  UrlCacheWalk walk(nullptr);
  for (int entry = 0; entry < 3; ++entry) ASSERT_TRUE(walk.Next());
  deleted = walk.Url();
  walk.DeleteEntry();
  EXPECT_EQ(CountEntries(kContent), 4);
  EXPECT_FALSE(IsCached(deleted));
  walk.DeleteEntry();
  EXPECT_EQ(CountEntries(kContent), 4) << "it is gone by now";
}

TEST_F(UrlCacheWalkTest, GoesOnBehindAnEntryThatGoesMeanwhile) {
  MakePages(10);
  const std::vector<std::string> order = CachedUrls();
  std::vector<std::string> found;
  UrlCacheWalk walk(nullptr);
  while (walk.Next()) {
    found.push_back(walk.Url());
    if (found.size() != 3) continue;
    for (const std::size_t gone : {2u, 3u, 6u, 9u}) ASSERT_TRUE(cache::Delete(order[gone].c_str()));
  }
  EXPECT_EQ(found, (std::vector<std::string>{order[0], order[1], order[2], order[4], order[5], order[7], order[8]}));
}

// Temporary internet files

TEST_F(ClearUrlCacheTest, RemovesContentAndCookiesAndSparesTheHistory) {
  MakeOneOfEach();
  ClearUrlCache();
  EXPECT_EQ(CachedUrls(), (std::vector<std::string>{"Visited: user@http://site.example/"}));
}

TEST_F(ClearUrlCacheTest, GivesTheBytesOfTheRemovedFiles) {
  MakeOneOfEach();
  MakePages(3);
  EXPECT_EQ(ClearUrlCache(), 100 + 20 + 1 + 2 + 3);
  EXPECT_EQ(ClearUrlCache(), 0) << "only the history is left";
}

TEST_F(ClearUrlCacheTest, RemovesTheFilesAndNothingBesideThem) {
  const std::string page = MakeContent("http://site.example/page.html", 100);
  const std::string cookie = MakeCookie("user@site", 20);
  std::vector<std::string> beside;
  for (const std::string& folder : {FolderOf(page), FolderOf(FolderOf(page)), FolderOf(cookie)}) {
    beside.push_back(folder + "\\beside.txt");
    WriteWhole(beside.back(), "content");
  }
  ClearUrlCache();
  EXPECT_FALSE(IsThere(page));
  EXPECT_FALSE(IsThere(cookie));
  for (const std::string& file : beside) {
    EXPECT_EQ(ReadWhole(file), "content") << file;
    ::DeleteFileA(file.c_str());
  }
}

TEST_F(ClearUrlCacheTest, DeletesNothingWhereThereIsOnlyHistory) {
  for (int page = 0; page < 20; ++page) ASSERT_TRUE(MakeVisited("http://site.example/" + std::to_string(page)));
  EXPECT_EQ(ClearUrlCache(), 0);
  EXPECT_EQ(CountEntries(kVisited), 20);
}

TEST_F(ClearUrlCacheTest, GivesNothingForAnEmptyCache) { EXPECT_EQ(ClearUrlCache(), 0); }

TEST_F(ClearUrlCacheTest, SparesTheHistoryInAnyCase) {
  for (const char* url : {"visited: user@http://a/", "VISITED: user@http://a/", "vIsItEd: user@http://a/"})
    ASSERT_TRUE(CommitEntry(url, "", NORMAL_CACHE_ENTRY)) << url;
  ASSERT_TRUE(CommitEntry("Visits: user@http://a/", "", NORMAL_CACHE_ENTRY));
  ClearUrlCache();
  EXPECT_EQ(CountEntries(kVisited), 3);
  EXPECT_EQ(CountEntries(kContent), 0);
}

TEST_F(ClearUrlCacheTest, RemovesCookiesInAnyCaseAndSparesTheirBareBeginning) {
  for (const char* url : {"Cookie:user@site/", "cookie:user@site/", "COOKIE:user@site/", "Cookie:"})
    ASSERT_NE(MakeEntryWithFile(url, 10, NORMAL_CACHE_ENTRY), "") << url;
  EXPECT_EQ(ClearUrlCache(), 30);
  EXPECT_EQ(CachedUrls(), (std::vector<std::string>{"Cookie:"})) << "too short for the comparison of eight characters";
}

TEST_F(ClearUrlCacheTest, RemovesEntriesOfEverySize) {
  for (const std::size_t header : {1u, 100u, 4096u, 16000u, 65000u})
    ASSERT_NE(MakeContent("http://site.example/header" + std::to_string(header), 1, std::string(header, 'h')), "");
  ASSERT_NE(MakeContent("http://site.example/" + std::string(1980, 'u'), 1), "");
  ASSERT_NE(MakeContent("http://site.example/empty", 0), "");
  ASSERT_NE(MakeContent("a", 1), "");
  EXPECT_EQ(ClearUrlCache(), 7);
  EXPECT_EQ(CachedUrls(), std::vector<std::string>());
}

TEST_F(ClearUrlCacheTest, RemovesAnEntryWithoutAFileAndOneWhoseFileIsGone) {
  ASSERT_TRUE(CommitEntry("http://site.example/none", "", NORMAL_CACHE_ENTRY));
  const std::string gone = MakeContent("http://site.example/gone", 50);
  ASSERT_TRUE(::DeleteFileA(gone.c_str()));
  MakePages(1);
  EXPECT_EQ(ClearUrlCache(), 1);
  EXPECT_EQ(CachedUrls(), std::vector<std::string>());
}

TEST_F(ClearUrlCacheTest, LeavesAnEntryThatIsInUseAndGoesOn) {
  const std::vector<std::string> files = MakePages(9);
  ASSERT_EQ(CountThere(files), 9);
  const std::string inUse = CachedUrls()[4];
  {
    const EntryInUse use(inUse);
    ASSERT_TRUE(use);
    ClearUrlCache();
    EXPECT_EQ(CountThere(files), 1);
  }
}

TEST_F(ClearUrlCacheTest, DoesNothingAfterAStop) {
  MakeOneOfEach();
  StopErase = true;
  EXPECT_EQ(ClearUrlCache(), 0);
  EXPECT_EQ(CachedUrls().size(), 3u);
}

TEST_F(ClearUrlCacheTest, EndsWithTheEntryAtWhichTheStopArrives) {
  const std::vector<std::string> files = MakePages(20);
  const std::string first = CachedUrls().front();
  events.AtTheNext([] { StopErase = true; });
  const std::int64_t removed = ClearUrlCache();
  EXPECT_EQ(CountThere(files), 19);
  EXPECT_FALSE(IsCached(first));
  EXPECT_EQ(removed, std::stoi(first.substr(first.rfind("page") + 4))) << "the bytes of " << first;
}

TEST_F(ClearUrlCacheTest, RunsOnWhenEntriesGoWhileWindowEventsRun) {
  MakePages(20);
  const std::vector<std::string> order = CachedUrls();
  events.AtTheNext([&] {
    for (const std::size_t gone : {1u, 2u, 10u, 19u}) ASSERT_TRUE(cache::Delete(order[gone].c_str()));
  });
  ClearUrlCache();
  EXPECT_TRUE(events.HasRun());
  EXPECT_EQ(CachedUrls(), std::vector<std::string>());
}

TEST_F(ClearUrlCacheTest, RunsOnWhenTheWholeCacheGoesWhileWindowEventsRun) {
  MakePages(20);
  events.AtTheNext([] { EmptyTheCache(); });
  ClearUrlCache();
  EXPECT_TRUE(events.HasRun());
  EXPECT_EQ(CachedUrls(), std::vector<std::string>());
}

TEST_F(ClearUrlCacheTest, RemovesAThousandEntries) {
  const std::vector<std::string> files = MakePages(1000);
  ASSERT_EQ(CountThere(files), 1000);
  MakeCookies(50);
  ASSERT_TRUE(MakeVisited("http://site.example/"));
  EXPECT_EQ(ClearUrlCache(), 1000 * 1001 / 2 + 50 * 10);
  EXPECT_EQ(CachedUrls().size(), 1u);
  EXPECT_EQ(CountThere(files), 0);
}

TEST_F(ClearUrlCacheTest, IsWhatTheItemOfTheCacheAndThatOfTheCookiesRun) {
  for (const char* item : {"TemporaryInternetFile", "Cookies"}) {
    MakeOneOfEach();
    RunItem(item);
    EXPECT_EQ(CachedUrls(), (std::vector<std::string>{"Visited: user@http://site.example/"}));
  }
}

// Cookies

TEST_F(ClearCookiesTest, RemovesTheCookiesAndNothingElse) {
  MakeOneOfEach();
  const std::vector<std::string> files = MakeCookies(5);
  EXPECT_EQ(ClearCookies(), 20 + 5 * 10);
  EXPECT_EQ(CountEntries(kCookie), 0);
  EXPECT_EQ(CountEntries(kContent), 1);
  EXPECT_EQ(CountEntries(kVisited), 1);
  EXPECT_EQ(CountThere(files), 0);
  EXPECT_EQ(ClearCookies(), 0) << "nothing is left for it";
}

TEST_F(ClearCookiesTest, GivesNothingForAnEmptyCache) { EXPECT_EQ(ClearCookies(), 0); }

TEST_F(ClearCookiesTest, LeavesCookiesInAnotherCaseToTheCacheWalk) {
  for (const char* url : {"cookie:user@site/", "COOKIE:user@site/"})
    ASSERT_NE(MakeEntryWithFile(url, 10, NORMAL_CACHE_ENTRY), "") << url;
  ClearCookies();
  EXPECT_EQ(CachedUrls().size(), 2u);
  ClearUrlCache();
  EXPECT_EQ(CachedUrls().size(), 0u);
}

TEST_F(ClearCookiesTest, RemovesACookieWhoseFileIsGone) {
  ::DeleteFileA(MakeCookie("user@gone", 20).c_str());
  MakeCookie("user@site", 20);
  EXPECT_EQ(ClearCookies(), 20);
  EXPECT_EQ(CountEntries(kCookie), 0);
}

// The program asks no list, whatever the keep list of the window "Cookies Manager" holds.
TEST_F(ClearCookiesTest, RemovesEveryCookieWithoutAList) {
  const std::string kept = MakeCookie("user@kept", 20);
  WriteWhole("C:\\test\\SafeCookie.dat", NameOf(kept) + "\r\n");
  ASSERT_EQ(lstSafeList, nullptr);
  EXPECT_EQ(ClearCookies(), 20);
  EXPECT_EQ(CountEntries(kCookie), 0);
  EXPECT_FALSE(IsThere(kept));
}

TEST_F(ClearCookiesTest, KeepsWhatAListHoldsAndTakesItsLengthOffTheTotal) {
  const std::string kept = MakeCookie("user@kept", 1000);
  const std::string other = MakeCookie("user@other", 20);
  const NamesToKeep list({NameOf(kept)});
  EXPECT_EQ(ClearCookies(), 20);
  EXPECT_EQ(CachedUrls(), (std::vector<std::string>{"Cookie:user@kept/"}));
  EXPECT_TRUE(IsThere(kept));
  EXPECT_FALSE(IsThere(other));
}

TEST_F(ClearCookiesTest, AsksTheListForTheNameOfTheFileOnceACookie) {
  MakePages(1);
  std::vector<std::string> names;
  for (const std::string& file : MakeCookies(3)) names.push_back(NameOf(file));
  NamesToKeep list({});
  ClearCookies();
  std::sort(names.begin(), names.end());
  std::sort(list.asked.begin(), list.asked.end());
  EXPECT_EQ(list.asked, names);
}

TEST_F(ClearCookiesTest, LetsWindowEventsRunAfterEveryEntry) {
  MakeCookies(30);
  NamesToKeep list({});
  int early = 0;
  list.whenAsked = [&] {
    if (!events.HasRun()) ++early;
    events.AtTheNext([] {});
  };
  ClearCookies();
  EXPECT_EQ(list.asked.size(), 30u);
  EXPECT_EQ(early, 0) << "cookies were visited before the events of the one before ran";
  EXPECT_TRUE(events.HasRun());
}

TEST_F(ClearCookiesTest, DoesNothingAfterAStop) {
  MakeCookies(3);
  StopErase = true;
  EXPECT_EQ(ClearCookies(), 0);
  EXPECT_EQ(CountEntries(kCookie), 3);
}

TEST_F(ClearCookiesTest, EndsInTheMiddleWithTheCookieAtWhichTheStopArrives) {
  const std::vector<std::string> files = MakeCookies(20);
  NamesToKeep list({});
  list.whenAsked = [&] {
    if (list.asked.size() == 7) events.AtTheNext([] { StopErase = true; });
  };
  EXPECT_EQ(ClearCookies(), 70);
  EXPECT_EQ(CountEntries(kCookie), 13);
  EXPECT_EQ(CountThere(files), 13);
}

TEST_F(ClearCookiesTest, RunsOnWhenTheCookieGoesBeforeItIsDeleted) {
  MakeCookies(5);
  NamesToKeep list({});
  list.whenAsked = [&] {
    if (list.asked.size() == 2) EmptyTheCache();
  };
  ClearCookies();
  EXPECT_EQ(list.asked.size(), 2u);
  EXPECT_EQ(CountEntries(kCookie), 0);
}
