#include "cleaners/cache_walks.h"

#include <string>

#include "cleaners/cache_entry_rule.h"
#include "cleaners/url_cache_walk.h"
#include "platform/message_pump.h"
#include "platform/path.h"
#include "platform/runtime_error.h"
#include "platform/stop_request.h"
#include "platform/told_of_files.h"
#include "platform/whole_file.h"

namespace cleaners {
using namespace platform;

namespace {

// Visits every entry; the stop request is looked at before each of them, window events run after each.
template <class Visit>
void WalkUrlCache(const char* pattern, Visit visit) {
  UrlCacheWalk walk(pattern);
  while (!StopErase && walk.Next()) {
    visit(walk);
    DoEvents();
  }
}

// 0 for an entry without a file and for a file that is gone.
std::int64_t LengthOfLocalFile(const UrlCacheWalk& walk) {
  if (walk.LocalFile().empty()) return 0;
  return valueOr(std::int64_t{0}, [&] { return static_cast<std::int64_t>(FileLen(SpelledPath(walk.LocalFile()))); });
}

// What the cookie walk leaves the cache walk meets again: that one tells of it.
enum class Failures { Tell, LeaveToAnother };

void DeleteEntry(UrlCacheWalk& walk, std::int64_t length, Failures failures) {
  DWORD reason = ERROR_PROC_NOT_FOUND;
  quietly([&] { reason = walk.DeleteEntry() ? ERROR_SUCCESS : ::GetLastError(); });
  if (reason == ERROR_SUCCESS)
    TellErasedWith(IsCookieUrl(walk.Url()) ? Trace::Cookie : Trace::CacheEntry, static_cast<std::uint64_t>(length));
  else if (failures == Failures::Tell)
    TellStayed(walk.Url().c_str(), WhyOf(reason), reason);
}

}  // namespace

std::int64_t ClearUrlCache() {
  std::int64_t total = 0;
  WalkUrlCache(nullptr, [&](UrlCacheWalk& walk) {
    if (!IsDeletedByCacheWalk(walk.Url())) return;
    const std::int64_t length = LengthOfLocalFile(walk);
    total += length;
    DeleteEntry(walk, length, Failures::Tell);
  });
  return total;
}

std::int64_t ClearCookies() {
  std::int64_t total = 0;
  WalkUrlCache("Cookie:", [&](UrlCacheWalk& walk) {
    const std::int64_t length = LengthOfLocalFile(walk);
    total += length;
    if (!IsCookieUrl(walk.Url())) return;
    if (lstSafeList != nullptr && lstSafeList->Holds(CookieName(walk.LocalFile())))
      total -= length;
    else
      DeleteEntry(walk, length, Failures::LeaveToAnother);
  });
  return total;
}

}  // namespace cleaners
