#include "cleaners/url_cache_walk.h"

#include "platform/runtime_error.h"
#include "platform/system_functions.h"

namespace {

constexpr std::size_t kLongestText = 0x10000;

}  // namespace

void UrlCacheFindPolicy::Close(Value value) { late::FindCloseUrlCache(value); }

bool UrlCacheWalk::Next() {
  record_ = {};
  url_.clear();
  localFile_.clear();
  bool fetched = false;
  resumeNext([&] { fetched = Fetch(); });
  if (!fetched) return false;
  block_.ReadFrom(&record_, sizeof record_);
  url_ = Text(record_.sourceUrlName);
  localFile_ = Text(record_.localFileName);
  return true;
}

// Asks for the next entry's size, then for the entry. There is no block behind the last entry, whose size is 0, and when
// the system has no memory. What does not fit any longer, or is gone, leaves the block zero.
bool UrlCacheWalk::Fetch() {
  DWORD size = 0;
  if (!started_) {
    started_ = true;
    late::FindFirstUrlCacheEntry(pattern_, nullptr, &size);
    block_.Allocate(size);
    if (block_.Handle() == nullptr) return false;
    find_.reset(late::FindFirstUrlCacheEntry(pattern_, block_.Handle(), &size));
    return true;
  }
  if (!find_) return false;
  late::FindNextUrlCacheEntry(find_.get(), nullptr, &size);
  block_.Allocate(size);
  if (block_.Handle() == nullptr) return false;
  late::FindNextUrlCacheEntry(find_.get(), block_.Handle(), &size);
  return true;
}

std::string UrlCacheWalk::Text(std::uint32_t address) const {
  return block_.ExtractString(reinterpret_cast<const char*>(address), kLongestText);
}

void UrlCacheWalk::DeleteEntry() {
  if (record_.sourceUrlName == 0) return;
  const std::string url = Text(record_.sourceUrlName);
  // Internet Explorer 3 and 4 have the function under the shorter name.
  if (late::DeleteUrlCacheEntryA)
    late::DeleteUrlCacheEntryA(url.c_str());
  else
    late::DeleteUrlCacheEntry(url.c_str());
}
