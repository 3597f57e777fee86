#include "platform/special_folder.h"

#include "platform/win32.h"

// The shell's headers need the lean windows.h before them.
#include <objbase.h>
#include <shlobj.h>

std::string FindSpecialFolder(int identifier) {
  LPITEMIDLIST items = nullptr;
  if (::SHGetSpecialFolderLocation(nullptr, identifier, &items) != NOERROR) return {};
  char path[MAX_PATH] = "";
  const BOOL found = ::SHGetPathFromIDListA(items, path);
  ::CoTaskMemFree(items);
  return found ? path : "";
}

std::string ProgramFolder() {
  char path[MAX_PATH] = "";
  const DWORD length = ::GetModuleFileNameA(nullptr, path, sizeof path);
  const std::string file(path, length);
  const std::size_t slash = file.rfind('\\');
  if (slash == std::string::npos) return {};
  return file.substr(0, slash == 2 ? 3 : slash);
}
