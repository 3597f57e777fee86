// The entries of the tests' URL history store, in a file that every process and every language can read and write.
//
// UTF-8, a line an entry, its fields parted by tabs: last visited, last updated and expires (file times in decimal), flags,
// URL, title. Beside it is the file of faults, a line each: what the store shall get wrong (url_history_store.cpp).
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

inline constexpr char kHistoryFile[] = "C:\\urlhistory.dat";
inline constexpr char kFaultsFile[] = "C:\\urlhistory.faults";

struct HistoryEntry {
  std::uint64_t lastVisited = 0, lastUpdated = 0, expires = 0;  // file times
  std::uint32_t flags = 0;
  std::wstring url, title;
};

inline std::string ToUtf8(const std::wstring& text) {
  const int wide = static_cast<int>(text.size());
  std::string bytes(text.size() * 3, '\0');
  bytes.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

inline std::wstring FromUtf8(const std::string& bytes) {
  const int length = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');
  text.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), length)));
  return text;
}

// Empty when there is no such file.
inline std::vector<std::string> ReadLines(const char* path) {
  std::vector<std::string> lines;
  std::ifstream file(path, std::ios::binary);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

inline std::vector<HistoryEntry> ReadHistory() {
  std::vector<HistoryEntry> entries;
  for (const std::string& line : ReadLines(kHistoryFile)) {
    std::istringstream fields(line);
    HistoryEntry entry;
    std::string url, title;
    fields >> entry.lastVisited >> entry.lastUpdated >> entry.expires >> entry.flags;
    fields.ignore(1);
    std::getline(fields, url, '\t');
    std::getline(fields, title);
    entry.url = FromUtf8(url);
    entry.title = FromUtf8(title);
    entries.push_back(entry);
  }
  return entries;
}

inline void WriteHistory(const std::vector<HistoryEntry>& entries) {
  const auto inOneLine = [](std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n'; }, ' ');
    return text;
  };
  std::ofstream file(kHistoryFile, std::ios::binary | std::ios::trunc);
  for (const HistoryEntry& entry : entries)
    file << entry.lastVisited << '\t' << entry.lastUpdated << '\t' << entry.expires << '\t' << entry.flags << '\t'
         << inOneLine(ToUtf8(entry.url)) << '\t' << inOneLine(ToUtf8(entry.title)) << '\n';
}
