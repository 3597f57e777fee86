#include "shred/subfolders.h"

#include <algorithm>
#include <cstring>

#include "platform/handles.h"
#include "platform/path_text.h"
#include "platform/system_error.h"
#include "platform/win32.h"

namespace {

// A "?" stands for a character outside the code page.
const char* UsableName(const WIN32_FIND_DATAA& found) {
  const bool unusable = std::strchr(found.cFileName, '?') != nullptr && found.cAlternateFileName[0] != '\0';
  return unusable ? found.cAlternateFileName : found.cFileName;
}

bool IsListed(const WIN32_FIND_DATAA& found) {
  const DWORD kind = found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
  return kind == FILE_ATTRIBUTE_DIRECTORY && std::strcmp(found.cFileName, ".") != 0 &&
         std::strcmp(found.cFileName, "..") != 0;
}

}  // namespace

std::vector<std::string> Drives() {
  std::vector<std::string> drives;
  const DWORD present = ::GetLogicalDrives();
  for (int letter = 0; letter < 26; ++letter)
    if ((present & (1u << letter)) != 0) drives.push_back(std::string(1, static_cast<char>('A' + letter)) + ":");
  return drives;
}

std::vector<std::string> Subfolders(const std::string& folder) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found;
  const UniqueFind find(::FindFirstFileA((AppendBackslash(folder) + "*").c_str(), &found));
  // An empty root has not even the two entries of every other folder.
  if (!find && ::GetLastError() != ERROR_FILE_NOT_FOUND) RaiseSystemError(::GetLastError());
  for (bool more = static_cast<bool>(find); more; more = ::FindNextFileA(find.get(), &found) != 0)
    if (IsListed(found)) names.emplace_back(UsableName(found));
  std::sort(names.begin(), names.end(),
            [](const std::string& one, const std::string& other) { return ::lstrcmpiA(one.c_str(), other.c_str()) < 0; });
  return names;
}
