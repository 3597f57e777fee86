#include "platform/special_folder.h"

#include "platform/system_functions.h"

std::string FindSpecialFolder(int identifier) {
  ItemIdList* items = nullptr;
  if (late::SHGetSpecialFolderLocation(nullptr, identifier, &items) != NOERROR) return {};
  char path[MAX_PATH] = "";
  const BOOL found = late::SHGetPathFromIDList(items, path);
  late::CoTaskMemFree(items);
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
