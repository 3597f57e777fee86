// The browser's URL history: the store that all programs of the user share, and its entries as a collection that stays
// as it is until the next Refresh.
//
// COM must run on the calling thread. An operation raises the error of the call that fails, if not said otherwise; then the
// collection is as it was, except that a Refresh that fails midway has replaced it by the entries read so far.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cleaners/URLHistoryItem.h"
#include "platform/com_interface.h"

namespace cleaners {
using namespace platform;

class CURLHistory {
 public:
  // Opens the store and fills the collection with all of it. Raises 429 when there is none to be had, whatever reason
  // COM gives.
  CURLHistory();
  CURLHistory(const CURLHistory&) = delete;
  CURLHistory& operator=(const CURLHistory&) = delete;

  // Into the store; the collection does not show it before the next Refresh. `flags`: ADDURL_FLAG of urlhist.h.
  void AddURL(const std::wstring& url, const std::wstring& title, std::uint32_t flags);

  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

  // Empties the store and refreshes the collection. Errors are ignored statement by statement and none is left pending, so
  // a store that cannot be emptied is still read anew.
  void Clear();

  // Fills the collection anew from the entries that the store's filter lets through, all of them for an empty one.
  // `flags`: STATURL_QUERYFLAG_ of urlhist.h.
  void Refresh(const std::wstring& filter, std::uint32_t flags);

  // The first item has the index 1; raises 9 outside of 1 to Count. The item goes with the next change of the collection.
  URLHistoryItem& Item(std::int32_t index);

  // Deletes the item's URL from the store, then the item from the collection, which stays as it is otherwise.
  void Remove(std::int32_t index);

  // Deletes a URL from the store and refreshes the collection. Errors are ignored as by Clear.
  void DeleteURL(const std::wstring& url, std::uint32_t flags);

  // The items in their order, for a loop over all of them; ends with the next change of the collection.
  std::span<URLHistoryItem> NewEnum() { return items_; }

 private:
  UniqueInterface<IUrlHistoryStg> store_;
  std::vector<URLHistoryItem> items_;
};

}  // namespace cleaners
