#include "platform/special_folder.h"

#include "platform/system_functions.h"

namespace {
// A fixed number: the look-up shows nothing that would need an owner.
const HWND kNoRealWindow = reinterpret_cast<HWND>(100);

// The short form of the program's path, also of one that the code page cannot hold; empty when there is none.
std::string ShortFormByWideNames() {
  wchar_t path[MAX_PATH] = L"";
  wchar_t shortPath[MAX_PATH] = L"";
  char text[MAX_PATH] = "";
  if (late::GetModuleFileNameWide && late::GetModuleFileNameWide(nullptr, path, MAX_PATH) != 0 &&
      late::GetShortPathNameWide && late::GetShortPathNameWide(path, shortPath, MAX_PATH) < MAX_PATH)
    ::WideCharToMultiByte(CP_ACP, 0, shortPath, -1, text, sizeof text, nullptr, nullptr);
  return text;
}

}  // namespace

std::string FindSpecialFolder(int identifier) {
  ItemIdList* items = nullptr;
  if (late::SHGetSpecialFolderLocation(kNoRealWindow, identifier, &items) != NOERROR) return {};
  char path[512] = "";
  const BOOL found = late::SHGetPathFromIDList(items, path);
  late::CoTaskMemFree(items);
  return found ? path : "";
}

std::string ProgramFile() {
  char path[MAX_PATH] = "";
  const std::string file(path, ::GetModuleFileNameA(nullptr, path, sizeof path));
  if (::GetFileAttributesA(file.c_str()) != INVALID_FILE_ATTRIBUTES) return file;
  // A path with "?" for what the code page cannot hold; it names nothing.
  const std::string shortForm = ShortFormByWideNames();
  return shortForm.empty() ? file : shortForm;
}

std::string ProgramFolder() {
  const std::string file = ProgramFile();
  const std::size_t slash = file.rfind('\\');
  if (slash == std::string::npos) return {};
  return file.substr(0, slash == 2 ? 3 : slash);
}
