// One entry of the browser's URL history: a copy of the store's record, whose two texts the item owns.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "platform/win32.h"

// After win32.h, which sets the version macros.
#include <urlhist.h>

namespace cleaners {

class URLHistoryItem {
 public:
  // Takes over the texts of `record`, which the store has allocated for its caller.
  explicit URLHistoryItem(const STATURL& record) noexcept : record_(record) {}
  URLHistoryItem(const URLHistoryItem&) = delete;
  URLHistoryItem& operator=(const URLHistoryItem&) = delete;
  URLHistoryItem(URLHistoryItem&& other) noexcept : record_(std::exchange(other.record_, STATURL{})) {}
  URLHistoryItem& operator=(URLHistoryItem&& other) noexcept {
    std::swap(record_, other.record_);
    return *this;
  }
  ~URLHistoryItem();

  // Automation dates: days since 30 December 1899, the time of day in the fraction. The first read gives local time. Every
  // read moves the stored time by the zone's offset once more, so the next one gives another date: whoever shows a date
  // reads it once. A time that is no date raises error 5.
  double LastVisited() { return ReadDate(record_.ftLastVisited); }
  double Expires() { return ReadDate(record_.ftExpires); }
  double LastUpdated() { return ReadDate(record_.ftLastUpdated); }

  std::wstring URL() const;  // empty when the store gave none
  std::uint32_t Flags() const { return record_.dwFlags; }
  std::wstring Title() const;  // "     (No Title Given)" for an entry without one

 private:
  static double ReadDate(FILETIME& stored);

  STATURL record_;
};

}  // namespace cleaners
