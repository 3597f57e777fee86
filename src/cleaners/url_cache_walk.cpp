#include "cleaners/url_cache_walk.h"

#include <cstddef>

#include "platform/runtime_error.h"
#include "platform/system_functions.h"
#include "platform/wide_system.h"

namespace cleaners {
using namespace platform;

namespace {

constexpr std::size_t kLongestText = 0x10000;
constexpr DWORD kPage = 4096;  // bytes

}  // namespace

// At the end of a walk, where nothing may fail.
void UrlCacheFindPolicy::Close(Value value) {
  quietly([value] { late::FindCloseUrlCache(value); });
}

bool UrlCacheWalk::Next() {
  record_ = {};
  url_.clear();
  localFile_.clear();
  if (!valueOr(false, [this] { return Fetch(); })) return false;
  block_.ReadFrom(&record_, sizeof record_);
  url_ = Text(record_.sourceUrlName);
  localFile_ = Widen(Text(record_.localFileName));
  return true;
}

// The first entry's size is asked for, and its block serves every entry that fits: asking for each one's size would cost as
// much as the entry. A larger one gets a block of its own. An entry that is gone by then
// leaves its new block zero.
bool UrlCacheWalk::Fetch() {
  DWORD size = 0;
  if (!started_) {
    started_ = true;
    late::FindFirstUrlCacheEntry(pattern_, nullptr, &size);
    if (!TakeBlock(size)) return false;
    size = blockSize_;
    find_.reset(late::FindFirstUrlCacheEntry(pattern_, block_.Handle(), &size));
    return true;
  }
  if (!find_) return false;
  size = blockSize_;
  if (late::FindNextUrlCacheEntry(find_.get(), block_.Handle(), &size)) return true;
  if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || !TakeBlock(size)) return false;
  size = blockSize_;
  late::FindNextUrlCacheEntry(find_.get(), block_.Handle(), &size);
  return true;
}

// Whole pages, as the system gives them.
bool UrlCacheWalk::TakeBlock(DWORD size) {
  blockSize_ = (size + kPage - 1) / kPage * kPage;
  block_.Allocate(blockSize_);
  return block_.Handle() != nullptr;
}

std::string UrlCacheWalk::Text(std::uint32_t address) const {
  return block_.ExtractString(reinterpret_cast<const char*>(address), kLongestText);
}

bool UrlCacheWalk::DeleteEntry() {
  ::SetLastError(ERROR_FILE_NOT_FOUND);
  if (record_.sourceUrlName == 0) return false;
  const std::string url = Text(record_.sourceUrlName);
  // Internet Explorer 3 and 4 have the function under the shorter name.
  if (late::DeleteUrlCacheEntryA) return late::DeleteUrlCacheEntryA(url.c_str()) != FALSE;
  return late::DeleteUrlCacheEntry(url.c_str()) != FALSE;
}

}  // namespace cleaners
