// What the URL cache puts at the start of the memory in which it returns an entry: its information structure
// (INTERNET_CACHE_ENTRY_INFOA of wininet.h, 80 bytes on 32-bit Windows) and the four bytes after it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace cleaners {

struct UrlCacheRecord {
  std::uint32_t structSize;
  std::uint32_t sourceUrlName;  // address of the URL's text
  std::uint32_t localFileName;  // address of the text; 0 for an entry without a file
  std::uint32_t entryType;
  std::uint32_t useCount;
  std::uint32_t hitRate;
  std::uint32_t sizeLow;
  std::uint32_t sizeHigh;
  std::uint32_t lastModified[2];  // file times, the low half first
  std::uint32_t expires[2];
  std::uint32_t lastAccess[2];
  std::uint32_t lastSync[2];
  std::uint32_t headerInfo;  // address
  std::uint32_t headerInfoSize;
  std::uint32_t fileExtension;  // address
  std::uint32_t reserved;
  std::uint32_t after;
};

static_assert(sizeof(UrlCacheRecord) == 84);
static_assert(offsetof(UrlCacheRecord, lastModified) == 32);
static_assert(offsetof(UrlCacheRecord, headerInfo) == 64);

}  // namespace cleaners
