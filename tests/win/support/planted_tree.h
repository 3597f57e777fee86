// A generated tree on the disk, laid out and looked at by what the program under test does not use itself: exact wide paths,
// and calls of the system that Wine runs on for the links, which Wine itself can neither make nor remove.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "generated_tree.h"
#include "platform/handles.h"

namespace trees {

using platform::UniqueFile;
using platform::UniqueFind;

// As the system that Wine runs on names a path.
inline std::string UnixName(const std::wstring& exact) {
  using Ask = char*(CDECL*)(const wchar_t*);
  static const auto ask = reinterpret_cast<Ask>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
  char* const found = ask(exact.c_str());
  const std::string name = found != nullptr ? found : "";
  ::HeapFree(::GetProcessHeap(), 0, found);
  return name;
}

inline bool UnixCall(long number, const char* first, const char* second) {
  long result;
  __asm__ volatile("int $0x80" : "=a"(result) : "a"(number), "b"(first), "c"(second) : "memory");
  return result == 0;
}

inline void MakeLink(const std::wstring& exact, const std::string& target) {
  constexpr long kSymlink = 83;
  EXPECT_TRUE(UnixCall(kSymlink, target.c_str(), UnixName(exact).c_str())) << Readable(exact) << " cannot be made a link";
}

inline bool RemoveLink(const std::wstring& exact) {
  constexpr long kUnlink = 10;
  return UnixCall(kUnlink, UnixName(exact).c_str(), nullptr);
}

// Every path below a folder with what the file there holds, as far as it is no folder. A link is named and not entered.
using Found = std::map<std::string, std::string>;

template <class Each>
void ForEachIn(const std::wstring& exact, const Each& each) {
  WIN32_FIND_DATAW found;
  const UniqueFind find(::FindFirstFileW((exact + L"\\*").c_str(), &found));
  if (!find) return;
  do {
    const std::wstring name = found.cFileName;
    if (name != L"." && name != L"..") each(name, found.dwFileAttributes);
  } while (::FindNextFileW(find.get(), &found));
}

inline std::string BytesOf(const std::wstring& exact) {
  const UniqueFile file(::CreateFileW(exact.c_str(), GENERIC_READ, 7, nullptr, OPEN_EXISTING, 0, nullptr));
  std::string bytes(8000, '\0');
  DWORD count = 0;
  ::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
  bytes.resize(count);
  return bytes;
}

inline void Look(const std::wstring& exact, const std::string& above, Found& found) {
  ForEachIn(exact, [&](const std::wstring& name, DWORD attributes) {
    const std::wstring path = exact + L"\\" + name;
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0,
               isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    found[above + Readable(name)] = isFolder ? "" : BytesOf(path);
    if (isFolder && !isLink) Look(path, above + Readable(name) + "\\", found);
  });
}

inline void RemoveAll(const std::wstring& exact) {
  std::vector<std::pair<std::wstring, DWORD>> entries;
  ForEachIn(exact,
            [&](const std::wstring& name, DWORD attributes) { entries.emplace_back(exact + L"\\" + name, attributes); });
  for (const auto& [path, attributes] : entries) {
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      RemoveLink(path);
      continue;
    }
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
      RemoveAll(path);
    else
      ::DeleteFileW(path.c_str());
  }
  ::RemoveDirectoryW(exact.c_str());
}

class PlantedTree {
 public:
  // Links lead to `outside`.
  PlantedTree(const std::wstring& exact, const std::wstring& outside, const Node& root)
      : exact_(exact), outside_(UnixName(outside)) {
    RemoveAll(exact_);
    ::CreateDirectoryW(exact_.c_str(), nullptr);
    Plant(root, exact_);
  }
  PlantedTree(const PlantedTree&) = delete;
  PlantedTree& operator=(const PlantedTree&) = delete;
  ~PlantedTree() {
    LetGo();
    RemoveAll(exact_);
  }

  void LetGo() { holders_.clear(); }

  Found Left() const {
    Found found;
    Look(exact_, "", found);
    return found;
  }
  bool IsThere() const { return ::GetFileAttributesW(exact_.c_str()) != INVALID_FILE_ATTRIBUTES; }

  // What is laid out of a tree.
  static Found Laid(const Node& folder, const std::string& above = "") {
    Found laid;
    for (const Node& node : folder.children) {
      const std::string path = above + Readable(Names()[node.name].text);
      laid[path] = BytesFor(node);
      laid.merge(Laid(node, path + "\\"));
    }
    return laid;
  }

 private:
  static std::string BytesFor(const Node& file) { return std::string(static_cast<std::size_t>(file.size), 'k'); }

  void Plant(const Node& folder, const std::wstring& exact) {
    for (const Node& node : folder.children) {
      const std::wstring path = exact + L"\\" + Names()[node.name].text;
      if (node.kind == Kind::Link) {
        MakeLink(path, node.leadsOut ? outside_ : "..");
        continue;
      }
      if (node.kind == Kind::Folder) {
        EXPECT_TRUE(::CreateDirectoryW(path.c_str(), nullptr)) << Readable(path);
        Plant(node, path);
      } else {
        PlantFile(node, path);
      }
      if (node.attributes != 0) ::SetFileAttributesW(path.c_str(), node.attributes);
      if (node.held != Held::No) Hold(node, path);
    }
  }

  static void PlantFile(const Node& node, const std::wstring& path) {
    const UniqueFile file(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(file) << Readable(path) << " cannot be made, system error " << ::GetLastError();
    const std::string bytes = BytesFor(node);
    DWORD written = 0;
    ::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  }

  void Hold(const Node& node, const std::wstring& path) {
    holders_.emplace_back(
        ::CreateFileW(path.c_str(), GENERIC_READ, node.share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    EXPECT_TRUE(holders_.back()) << Readable(path) << " cannot be held, system error " << ::GetLastError();
  }

  std::wstring exact_;
  std::string outside_;
  std::vector<UniqueFile> holders_;
};

}  // namespace trees
