#include "cleaners/URLHistoryItem.h"

#include <cstddef>

#include "platform/runtime_error.h"
#include "platform/system_functions.h"

namespace cleaners {
using namespace platform;

// The record as every store fills it.
static_assert(sizeof(STATURL) == 40);
static_assert(offsetof(STATURL, pwcsTitle) == 8);
static_assert(offsetof(STATURL, ftLastUpdated) == 20);
static_assert(offsetof(STATURL, dwFlags) == 36);

namespace {

std::wstring TextAt(const wchar_t* address) {
  if (address == nullptr) return {};
  return std::wstring(address, static_cast<std::size_t>(::lstrlenW(address)));
}

void FreeText(wchar_t* text) {
  quietly([text] {
    if (text != nullptr) late::CoTaskMemFree(text);
  });
}

}  // namespace

URLHistoryItem::~URLHistoryItem() {
  FreeText(record_.pwcsTitle);
  FreeText(record_.pwcsUrl);
}

std::wstring URLHistoryItem::URL() const { return TextAt(record_.pwcsUrl); }

std::wstring URLHistoryItem::Title() const {
  const std::wstring title = TextAt(record_.pwcsTitle);
  return title.empty() ? L"     (No Title Given)" : title;
}

double URLHistoryItem::ReadDate(FILETIME& stored) {
  // By way of a second variable: the system does not promise to convert a time in its own place.
  FILETIME moved;
  SYSTEMTIME local;
  double date = 0;
  if (!::FileTimeToLocalFileTime(&stored, &moved)) Raise(kInvalidCall);
  stored = moved;
  if (!::FileTimeToSystemTime(&stored, &local)) Raise(kInvalidCall);
  if (!late::SystemTimeToVariantTime(&local, &date)) Raise(kInvalidCall);
  return date;
}

}  // namespace cleaners
