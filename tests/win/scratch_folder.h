// A folder of a test with files in it; gone before and after the test.
#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/win32.h"

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

class ScratchFolder {
 public:
  explicit ScratchFolder(std::string path = "C:\\test\\scratch") : path_(std::move(path)) {
    RemoveTree(path_);
    ::CreateDirectoryA(path_.c_str(), nullptr);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() { RemoveTree(path_); }

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "\\" + name; }

  // Makes the file and gives its path.
  std::string File(const std::string& name, const std::string& bytes = "content") const {
    WriteWhole(*this / name, bytes);
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
