// The entries of the browser's URL cache, one after another. Without wininet, and when the cache cannot be read, there
// are none.
#pragma once

#include <cstdint>
#include <string>

#include "cleaners/url_cache_record.h"
#include "platform/clsMemoryManagement.h"
#include "platform/handles.h"
#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

struct UrlCacheFindPolicy {
  using Value = HANDLE;
  static Value Invalid() { return nullptr; }
  static void Close(Value value);
};
using UniqueUrlCacheFind = UniqueHandle<UrlCacheFindPolicy>;

class UrlCacheWalk {
 public:
  // The search pattern of the cache ("Cookie:"); null for every entry. The system may ignore it.
  explicit UrlCacheWalk(const char* pattern) : pattern_(pattern) {}

  // False after the last entry; what is known of the one before is then empty. An entry that went meanwhile has no URL.
  bool Next();

  const std::string& Url() const { return url_; }           // empty when it has none
  const WideText& LocalFile() const { return localFile_; }  // as the cache has it; empty for an entry without a file

  // Removes the entry together with its file. False for one that is in use, or gone by now, with the reason in GetLastError.
  bool DeleteEntry();

 private:
  bool Fetch();
  bool TakeBlock(DWORD size);
  std::string Text(std::uint32_t address) const;

  const char* pattern_;
  UniqueUrlCacheFind find_;
  bool started_ = false;
  clsMemoryManagement block_;
  DWORD blockSize_ = 0;  // bytes
  UrlCacheRecord record_{};
  std::string url_;
  WideText localFile_;
};

}  // namespace cleaners
