// A folder of a test with files in it; gone before and after the test.
#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/win32.h"

using namespace platform;

inline void WriteWhole(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadWhole(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

inline bool IsThere(const std::string& path) { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

// The names in a folder without "." and ".."; a mask picks some of them.
inline std::vector<std::string> NamesIn(const std::string& folder, const std::string& mask = "*") {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found;
  const HANDLE find = ::FindFirstFileA((folder + "\\" + mask).c_str(), &found);
  if (find == INVALID_HANDLE_VALUE) return names;
  do {
    const std::string name = found.cFileName;
    if (name != "." && name != "..") names.push_back(name);
  } while (::FindNextFileA(find, &found));
  ::FindClose(find);
  return names;
}

// Everything below a folder, "inner\\name" for what lies deeper. A link is named and not entered.
inline std::vector<std::string> NamesBelow(const std::string& folder) {
  std::vector<std::string> names;
  for (const std::string& name : NamesIn(folder)) {
    names.push_back(name);
    const std::string path = folder + "\\" + name;
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) != FILE_ATTRIBUTE_DIRECTORY) continue;
    for (const std::string& inner : NamesBelow(path)) names.push_back(name + "\\" + inner);
  }
  return names;
}

// Every folder that the file lies in.
inline void MakeFoldersFor(const std::string& file) {
  for (std::size_t end = file.find('\\', 3); end != std::string::npos; end = file.find('\\', end + 1))
    ::CreateDirectoryA(file.substr(0, end).c_str(), nullptr);
}

inline void PutFile(const std::string& path, const std::string& bytes = "content") {
  MakeFoldersFor(path);
  WriteWhole(path, bytes);
}

class ScratchFolder {
 public:
  explicit ScratchFolder(std::string path = "C:\\test\\scratch") : path_(std::move(path)) {
    RemoveTree(path_);
    MakeFoldersFor(path_ + "\\");
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() { RemoveTree(path_); }

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "\\" + name; }

  // Makes the file and the folders that it lies in, and gives its path.
  std::string File(const std::string& name, const std::string& bytes = "content") const {
    PutFile(*this / name, bytes);
    return *this / name;
  }

 private:
  static void RemoveTree(const std::string& folder) {
    for (const std::string& name : NamesIn(folder)) {
      const std::string path = folder + "\\" + name;
      ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      if (!::DeleteFileA(path.c_str())) RemoveTree(path);
    }
    ::RemoveDirectoryA(folder.c_str());
  }

  std::string path_;
};
