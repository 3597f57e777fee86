// The two walks over the URL cache. Each returns the bytes of the local files whose entries it removed; a window event is
// let through after every entry, and a stop request ends the walk at the next one.
#pragma once

#include <cstdint>

#include "platform/wide_text.h"

namespace cleaners {
using namespace platform;

// Temporary internet files: everything but the history's entries, cookies included (cache_entry_rule.h).
std::int64_t ClearUrlCache();

// The entries whose URL begins with "Cookie:".
std::int64_t ClearCookies();

// What the cookie walk asks whether a cookie is to be kept.
class KeepList {
 public:
  virtual bool Holds(const WideText& cookieName) const = 0;

 protected:
  ~KeepList() = default;
};

// The list `lstSafeList` as the cookie walk finds it on the window that it refers to. The program never sets that
// reference, so the look-up fails and no cookie counts as kept: the keep list rules what the window
// "Cookies Manager" shows, and an erase takes every cookie.
inline const KeepList* lstSafeList = nullptr;

}  // namespace cleaners
