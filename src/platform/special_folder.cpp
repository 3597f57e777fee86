#include "platform/special_folder.h"

#include "platform/native_files.h"
#include "platform/system_functions.h"

namespace platform {

namespace {
// A fixed number: the look-up shows nothing that would need an owner.
const HWND kNoRealWindow = reinterpret_cast<HWND>(100);

std::string PathOf(const ItemIdList* items) {
  if (UsesWideNames() && late::SHGetPathFromIDListWide) {
    wchar_t path[512] = L"";
    return late::SHGetPathFromIDListWide(items, path) ? AnsiPath(ToNativePath(std::wstring(path))) : "";
  }
  char path[512] = "";
  return late::SHGetPathFromIDList(items, path) ? path : "";
}

}  // namespace

std::string FindSpecialFolder(int identifier) {
  ItemIdList* items = nullptr;
  if (late::SHGetSpecialFolderLocation(kNoRealWindow, identifier, &items) != NOERROR) return {};
  std::string path = PathOf(items);
  late::CoTaskMemFree(items);
  return path;
}

std::string ProgramFile() {
  if (UsesWideNames() && late::GetModuleFileNameWide) {
    wchar_t path[MAX_PATH] = L"";
    return AnsiPath(ToNativePath(std::wstring(path, late::GetModuleFileNameWide(nullptr, path, MAX_PATH))));
  }
  char path[MAX_PATH] = "";
  return std::string(path, ::GetModuleFileNameA(nullptr, path, sizeof path));
}

std::string ProgramFolder() {
  const std::string file = ProgramFile();
  const std::size_t slash = file.rfind('\\');
  if (slash == std::string::npos) return {};
  return file.substr(0, slash == 2 ? 3 : slash);
}

}  // namespace platform
