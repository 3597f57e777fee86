// The browser's URL history store as an in-process COM server that keeps real entries: Wine has only a stub of it.
//
// url_history.py builds and registers it. It writes down the calls that it gets and counts its objects and the references to
// them; a test asks for both through the functions exported at the end. A line of the file of faults makes it fail:
//   CreateInstance, AddUrl, DeleteUrl, EnumUrls, ClearHistory, SetFilter, Next   the call returns E_FAIL
//   Next 2                                                                       the call after two entries does
//   IUrlHistoryStg2                                                              there is no such interface
//   empty titles                                                                 an empty title is handed out as such
#include "url_history_file.h"

#include <urlhist.h>
#include <wininet.h>

#include <atomic>
#include <cstring>
#include <set>

namespace {

constexpr GUID kUrlHistoryClass = {0x3C374A40, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
constexpr GUID kUrlHistoryStg = {0x3C374A41, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
constexpr GUID kEnumStatUrl = {0x3C374A42, 0xBAE4, 0x11CF, {0xBF, 0x7D, 0x00, 0xAA, 0x00, 0x69, 0x46, 0xEE}};
constexpr GUID kUrlHistoryStg2 = {0xAFA0DC11, 0xC313, 0x11D0, {0x83, 0x1A, 0x00, 0xC0, 0x4F, 0xD5, 0xAE, 0x38}};
constexpr GUID kUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr GUID kClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

std::atomic<long> liveObjects, outstandingReferences;
std::string calls;

void NoteCall(const std::string& call) { calls += call + '\n'; }

std::string Shown(const wchar_t* text) { return text != nullptr ? ToUtf8(text) : "null"; }

class Faults {
 public:
  bool Has(const std::string& fault) const { return faults_.count(fault) != 0; }

 private:
  static std::set<std::string> Read() {
    const std::vector<std::string> lines = ReadLines(kFaultsFile);
    return std::set<std::string>(lines.begin(), lines.end());
  }
  std::set<std::string> faults_ = Read();
};

bool Fails(const std::string& call) { return Faults().Has(call); }

// While one lives, no other process changes the entries.
class Guard {
 public:
  Guard() { ::WaitForSingleObject(mutex_, INFINITE); }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;
  ~Guard() {
    ::ReleaseMutex(mutex_);
    ::CloseHandle(mutex_);
  }

 private:
  HANDLE mutex_ = ::CreateMutexA(nullptr, FALSE, "QuellixTestUrlHistoryStore");
};

// Born with one reference, which belongs to the caller of new.
template <class Interface>
class Object : public Interface {
 public:
  Object() {
    ++liveObjects;
    ++outstandingReferences;
  }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() { --liveObjects; }

  ULONG STDMETHODCALLTYPE AddRef() override {
    ++outstandingReferences;
    return ++references_;
  }
  ULONG STDMETHODCALLTYPE Release() override {
    --outstandingReferences;
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override {
    *found = wanted == kUnknown || Has(wanted) ? this : nullptr;
    if (*found == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

 private:
  virtual bool Has(REFIID wanted) const = 0;
  std::atomic<ULONG> references_ = 1;
};

// Memory that the caller frees; null for no text.
wchar_t* HandOut(const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  void* const memory = ::CoTaskMemAlloc(bytes);
  std::memcpy(memory, text.c_str(), bytes);
  return static_cast<wchar_t*>(memory);
}

FILETIME ToFileTime(std::uint64_t ticks) { return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)}; }

std::uint64_t Now() {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  return (static_cast<std::uint64_t>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
}

HRESULT HandOut(const HistoryEntry& entry, DWORD flags, bool emptyTitles, STATURL* record) {
  if (record->cbSize != sizeof(STATURL)) return E_INVALIDARG;
  const bool titled = !entry.title.empty() || emptyTitles;
  record->pwcsUrl = (flags & STATURL_QUERYFLAG_NOURL) != 0 ? nullptr : HandOut(entry.url);
  record->pwcsTitle = (flags & STATURL_QUERYFLAG_NOTITLE) != 0 || !titled ? nullptr : HandOut(entry.title);
  record->ftLastVisited = ToFileTime(entry.lastVisited);
  record->ftLastUpdated = ToFileTime(entry.lastUpdated);
  record->ftExpires = ToFileTime(entry.expires);
  record->dwFlags = entry.flags;
  return S_OK;
}

// The entries as they were when it was made.
class Enumerator : public Object<IEnumSTATURL> {
 public:
  explicit Enumerator(std::vector<HistoryEntry> entries) : entries_(std::move(entries)) {}
  ~Enumerator() override { NoteCall("enumerator released"); }

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, STATURL* records, ULONG* fetched) override {
    NoteCall("Next(" + std::to_string(wanted) + ")");
    *fetched = 0;
    while (*fetched < wanted) {
      SkipWhatTheFilterHides();
      if (faults_.Has("Next") || faults_.Has("Next " + std::to_string(handedOut_))) return E_FAIL;
      if (next_ == entries_.size()) return S_FALSE;
      const HRESULT result = HandOut(entries_[next_], flags_, faults_.Has("empty titles"), records + *fetched);
      if (result != S_OK) return result;
      ++next_, ++handedOut_, ++*fetched;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    for (; count > 0; --count, ++next_) {
      SkipWhatTheFilterHides();
      if (next_ == entries_.size()) return S_FALSE;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumSTATURL** clone) override {
    auto* const twin = new Enumerator(entries_);
    twin->next_ = next_;
    twin->filter_ = filter_;
    twin->flags_ = flags_;
    *clone = twin;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetFilter(LPCOLESTR filter, DWORD flags) override {
    NoteCall("SetFilter(" + Shown(filter) + ", " + std::to_string(flags) + ")");
    if (faults_.Has("SetFilter")) return E_FAIL;
    filter_ = filter != nullptr ? filter : L"";
    flags_ = flags;
    return S_OK;
  }

 private:
  bool Has(REFIID wanted) const override { return wanted == kEnumStatUrl; }

  bool Shows(const HistoryEntry& entry) const {
    if ((flags_ & STATURL_QUERYFLAG_ISCACHED) != 0 && (entry.flags & STATURLFLAG_ISCACHED) == 0) return false;
    if ((flags_ & STATURL_QUERYFLAG_TOPLEVEL) != 0 && (entry.flags & STATURLFLAG_ISTOPLEVEL) == 0) return false;
    return entry.url.compare(0, filter_.size(), filter_) == 0;
  }
  void SkipWhatTheFilterHides() {
    while (next_ < entries_.size() && !Shows(entries_[next_])) ++next_;
  }

  std::vector<HistoryEntry> entries_;
  std::size_t next_ = 0, handedOut_ = 0;
  std::wstring filter_;
  DWORD flags_ = 0;
  Faults faults_;
};

// The history entries of the URL cache, which the browser's own store empties as well.
void DeleteVisitedEntries() {
  std::vector<std::string> urls;
  std::vector<char> buffer(0x10000);
  auto* const info = reinterpret_cast<INTERNET_CACHE_ENTRY_INFOA*>(buffer.data());
  DWORD size = static_cast<DWORD>(buffer.size());
  const HANDLE find = ::FindFirstUrlCacheEntryA(nullptr, info, &size);
  if (find == nullptr) return;
  do {
    const std::string url = info->lpszSourceUrlName;
    if (url.compare(0, 8, "Visited:") == 0) urls.push_back(url);
    size = static_cast<DWORD>(buffer.size());
  } while (::FindNextUrlCacheEntryA(find, info, &size));
  ::FindCloseUrlCache(find);
  for (const std::string& url : urls) ::DeleteUrlCacheEntryA(url.c_str());
}

class Store : public Object<IUrlHistoryStg2> {
 public:
  HRESULT STDMETHODCALLTYPE AddUrl(LPCOLESTR url, LPCOLESTR title, DWORD flags) override {
    NoteCall("AddUrl(" + Shown(url) + ", " + Shown(title) + ", " + std::to_string(flags) + ")");
    if (Fails("AddUrl")) return E_FAIL;
    const Guard guard;
    std::vector<HistoryEntry> entries = ReadHistory();
    auto found = Find(entries, url);
    if (found == entries.end()) found = entries.insert(entries.end(), HistoryEntry{});
    found->url = url;
    found->title = title != nullptr ? title : L"";
    found->lastVisited = found->lastUpdated = Now();
    found->expires = Now() + 20ull * 24 * 3600 * 10000000;
    WriteHistory(entries);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DeleteUrl(LPCOLESTR url, DWORD flags) override {
    NoteCall("DeleteUrl(" + Shown(url) + ", " + std::to_string(flags) + ")");
    if (Fails("DeleteUrl")) return E_FAIL;
    const Guard guard;
    std::vector<HistoryEntry> entries = ReadHistory();
    const auto found = Find(entries, url);
    if (found == entries.end()) return E_FAIL;
    entries.erase(found);
    WriteHistory(entries);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryUrl(LPCOLESTR url, DWORD flags, STATURL* record) override {
    const Guard guard;
    std::vector<HistoryEntry> entries = ReadHistory();
    const auto found = Find(entries, url);
    if (found == entries.end()) return E_FAIL;
    return record != nullptr ? HandOut(*found, flags, Fails("empty titles"), record) : S_OK;
  }
  HRESULT STDMETHODCALLTYPE BindToObject(LPCOLESTR, REFIID, void** found) override {
    *found = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EnumUrls(IEnumSTATURL** enumerator) override {
    NoteCall("EnumUrls");
    *enumerator = nullptr;
    if (Fails("EnumUrls")) return E_FAIL;
    const Guard guard;
    *enumerator = new Enumerator(ReadHistory());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE AddUrlAndNotify(LPCOLESTR url, LPCOLESTR title, DWORD flags, BOOL write, IOleCommandTarget*,
                                            IUnknown*) override {
    return write ? AddUrl(url, title, flags) : S_OK;
  }
  HRESULT STDMETHODCALLTYPE ClearHistory() override {
    NoteCall("ClearHistory");
    if (Fails("ClearHistory")) return E_FAIL;
    const Guard guard;
    WriteHistory({});
    DeleteVisitedEntries();
    return S_OK;
  }

 private:
  bool Has(REFIID wanted) const override {
    return wanted == kUrlHistoryStg || (wanted == kUrlHistoryStg2 && !Fails("IUrlHistoryStg2"));
  }

  static std::vector<HistoryEntry>::iterator Find(std::vector<HistoryEntry>& entries, const wchar_t* url) {
    return std::find_if(entries.begin(), entries.end(), [url](const HistoryEntry& entry) { return entry.url == url; });
  }
};

class Factory : public Object<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** made) override {
    *made = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (Fails("CreateInstance")) return E_FAIL;
    auto* const store = new Store;
    const HRESULT result = store->QueryInterface(wanted, made);
    store->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  bool Has(REFIID wanted) const override { return wanted == kClassFactory; }
};

}  // namespace

extern "C" {

__declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID wantedClass, REFIID wanted, void** found) {
  *found = nullptr;
  if (wantedClass != kUrlHistoryClass) return CLASS_E_CLASSNOTAVAILABLE;
  auto* const factory = new Factory;
  const HRESULT result = factory->QueryInterface(wanted, found);
  factory->Release();
  return result;
}

__declspec(dllexport) HRESULT WINAPI DllCanUnloadNow() { return liveObjects == 0 ? S_OK : S_FALSE; }

__declspec(dllexport) long LiveObjects() { return liveObjects; }
__declspec(dllexport) long OutstandingReferences() { return outstandingReferences; }

// The calls since the last ForgetCalls, a line each, in UTF-8.
__declspec(dllexport) const char* Calls() { return calls.c_str(); }
__declspec(dllexport) void ForgetCalls() { calls.clear(); }
}
