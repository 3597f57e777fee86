// Fills the real URL cache of the current user with entries and counts them, without the product's help.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/late_binding.h"
#include "platform/win32.h"
#include "scratch_folder.h"

// After win32.h, which sets the version macros.
#include <wininet.h>

using namespace platform;

namespace cache {

inline const LateFunction<BOOL(WINAPI*)(LPCSTR, DWORD, LPCSTR, LPSTR, DWORD)> Create{"wininet.dll", "CreateUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR, LPCSTR, FILETIME, FILETIME, DWORD, const void*, DWORD, LPCSTR, LPCSTR)>
    Commit{"wininet.dll", "CommitUrlCacheEntryA"};
inline const LateFunction<HANDLE(WINAPI*)(LPCSTR, void*, DWORD*)> FindFirst{"wininet.dll", "FindFirstUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE, void*, DWORD*)> FindNext{"wininet.dll", "FindNextUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE)> FindClose{"wininet.dll", "FindCloseUrlCache"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR)> Delete{"wininet.dll", "DeleteUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR, void*, DWORD*, DWORD)> Retrieve{"wininet.dll", "RetrieveUrlCacheEntryFileA"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR, DWORD)> Unlock{"wininet.dll", "UnlockUrlCacheEntryFile"};

}  // namespace cache

enum class EntryKind { Content, Cookie, Visited };

inline std::string CookieUrl(const std::string& cookie) { return "Cookie:" + cookie + "/"; }
inline std::string VisitedUrl(const std::string& url) { return "Visited: user@" + url; }

// False when the cache takes no such entry. An empty path makes an entry without a file.
inline bool CommitEntry(const std::string& url, const std::string& path, DWORD type, const std::string& header = "") {
  const FILETIME none{};
  return cache::Commit(url.c_str(), path.empty() ? nullptr : path.c_str(), none, none, type,
                       header.empty() ? nullptr : header.data(), static_cast<DWORD>(header.size()), nullptr, nullptr) != 0;
}

// Gives the path of the entry's file; empty when the cache takes no such entry.
inline std::string MakeEntryWithFile(const std::string& url, std::size_t bytes, DWORD type, const std::string& header = "") {
  char path[MAX_PATH] = "";
  if (!cache::Create(url.c_str(), static_cast<DWORD>(bytes), "txt", path, 0)) return {};
  WriteWhole(path, std::string(bytes, 'x'));
  return CommitEntry(url, path, type, header) ? path : "";
}

inline std::string MakeContent(const std::string& url, std::size_t bytes, const std::string& header = "") {
  return MakeEntryWithFile(url, bytes, NORMAL_CACHE_ENTRY, header);
}

// `cookie` is "user@site".
inline std::string MakeCookie(const std::string& cookie, std::size_t bytes) {
  return MakeEntryWithFile(CookieUrl(cookie), bytes, NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY);
}

// A page of the history, which has no file.
inline bool MakeVisited(const std::string& url) {
  return CommitEntry(VisitedUrl(url), "", NORMAL_CACHE_ENTRY | URLHISTORY_CACHE_ENTRY);
}

// Every entry's URL, in the cache's order.
inline std::vector<std::string> CachedUrls() {
  std::vector<std::string> urls;
  std::vector<std::uint64_t> block(0x4000);  // 128 KB, more than any entry takes
  const auto room = static_cast<DWORD>(block.size() * sizeof block[0]);
  const auto* const entry = reinterpret_cast<const INTERNET_CACHE_ENTRY_INFOA*>(block.data());
  DWORD size = room;
  const HANDLE find = cache::FindFirst(nullptr, block.data(), &size);
  for (bool more = find != nullptr; more; more = cache::FindNext(find, block.data(), &size) != 0) {
    urls.push_back(entry->lpszSourceUrlName);
    size = room;
  }
  if (find != nullptr) cache::FindClose(find);
  return urls;
}

inline bool IsCached(const std::string& url) {
  const std::vector<std::string> urls = CachedUrls();
  return std::find(urls.begin(), urls.end(), url) != urls.end();
}

inline EntryKind KindOf(const std::string& url) {
  if (url.compare(0, 7, "Cookie:") == 0) return EntryKind::Cookie;
  return _strnicmp(url.c_str(), "Visited:", 8) == 0 ? EntryKind::Visited : EntryKind::Content;
}

inline int CountEntries(EntryKind kind) {
  const std::vector<std::string> urls = CachedUrls();
  return static_cast<int>(
      std::count_if(urls.begin(), urls.end(), [&](const std::string& url) { return KindOf(url) == kind; }));
}

inline void EmptyTheCache() {
  for (const std::string& url : CachedUrls()) cache::Delete(url.c_str());
}
