#include "cleaners/CURLHistory.h"

#include <cstddef>

#include "platform/runtime_error.h"
#include "platform/system_error.h"
#include "platform/system_functions.h"

namespace cleaners {
using namespace platform;

namespace {

// The identifiers that the browser publishes: CLSID_CUrlHistory of shlguid.h, the interfaces' of urlhist.h.
constexpr GUID kUrlHistoryClass = {0x3C374A40, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
constexpr GUID kUrlHistoryStg = {0x3C374A41, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
constexpr GUID kUrlHistoryStg2 = {0xAFA0DC11, 0xC313, 0x11D0, {0x83, 0x1A, 0x00, 0xC0, 0x4F, 0xD5, 0xAE, 0x38}};

IUrlHistoryStg* CreateStore() {
  void* store = nullptr;
  const HRESULT result = late::CoCreateInstance(kUrlHistoryClass, nullptr, CLSCTX_INPROC_SERVER, kUrlHistoryStg, &store);
  if (result < 0) Raise(kCannotCreateObject);
  return static_cast<IUrlHistoryStg*>(store);
}

// The interface that came with Internet Explorer 4.
void ClearStore(IUrlHistoryStg& store) {
  void* found = nullptr;
  CheckResult(store.QueryInterface(kUrlHistoryStg2, &found));
  const UniqueInterface<IUrlHistoryStg2> store2(static_cast<IUrlHistoryStg2*>(found));
  CheckResult(store2.get()->ClearHistory());
}

}  // namespace

CURLHistory::CURLHistory() : store_(CreateStore()) { Refresh(L"", 0); }

void CURLHistory::AddURL(const std::wstring& url, const std::wstring& title, std::uint32_t flags) {
  CheckResult(store_.get()->AddUrl(url.c_str(), title.c_str(), flags));
}

void CURLHistory::Clear() {
  quietly([&] { ClearStore(*store_.get()); });
  quietly([&] { Refresh(L"", 0); });
}

void CURLHistory::Refresh(const std::wstring& filter, std::uint32_t flags) {
  IEnumSTATURL* opened = nullptr;
  CheckResult(store_.get()->EnumUrls(&opened));
  const UniqueInterface<IEnumSTATURL> records(opened);
  CheckResult(records.get()->SetFilter(filter.c_str(), flags));
  items_.clear();
  for (;;) {
    STATURL record{};
    record.cbSize = sizeof record;
    ULONG fetched = 0;
    CheckResult(records.get()->Next(1, &record, &fetched));
    if (fetched == 0) return;
    items_.push_back(URLHistoryItem(record));  // the item owns the texts before the collection grows
  }
}

URLHistoryItem& CURLHistory::Item(std::int32_t index) {
  if (index < 1 || index > Count()) Raise(kSubscriptOutOfRange);
  return items_[static_cast<std::size_t>(index) - 1];
}

void CURLHistory::Remove(std::int32_t index) {
  CheckResult(store_.get()->DeleteUrl(Item(index).URL().c_str(), 0));
  items_.erase(items_.begin() + (index - 1));
}

void CURLHistory::DeleteURL(const std::wstring& url, std::uint32_t flags) {
  quietly([&] { CheckResult(store_.get()->DeleteUrl(url.c_str(), flags)); });
  quietly([&] { Refresh(L"", 0); });
}

}  // namespace cleaners
