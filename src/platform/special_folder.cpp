#include "platform/special_folder.h"

#include "platform/system_functions.h"

namespace {
// A fixed number: the look-up shows nothing that would need an owner.
const HWND kNoRealWindow = reinterpret_cast<HWND>(100);
}  // namespace

std::string FindSpecialFolder(int identifier) {
  ItemIdList* items = nullptr;
  if (late::SHGetSpecialFolderLocation(kNoRealWindow, identifier, &items) != NOERROR) return {};
  char path[512] = "";
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
