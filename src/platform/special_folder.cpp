#include "platform/special_folder.h"

#include "platform/native_files.h"
#include "platform/system_functions.h"

namespace platform {

namespace {

// A fixed number: the look-up shows nothing that would need an owner.
const HWND kNoRealWindow = reinterpret_cast<HWND>(100);

WideText TextOf(const ItemIdList* items) {
  if (UsesWideNames() && late::SHGetPathFromIDListWide) {
    wchar_t path[512] = L"";
    return late::SHGetPathFromIDListWide(items, path) ? path : L"";
  }
  char path[512] = "";
  return Widen(late::SHGetPathFromIDList(items, path) ? path : "");
}

}  // namespace

Path FindSpecialFolder(int identifier) {
  ItemIdList* items = nullptr;
  if (late::SHGetSpecialFolderLocation(kNoRealWindow, identifier, &items) != NOERROR) return {};
  const WideText text = TextOf(items);
  late::CoTaskMemFree(items);
  return SpelledPath(text);
}

Path WindowsFolder() {
  return SpelledPath(
      SystemText([](wchar_t* text, DWORD size, const void*) -> DWORD { return late::GetWindowsDirectoryWide(text, size); },
                 [](char* text, DWORD size, const void*) -> DWORD { return ::GetWindowsDirectoryA(text, size); }));
}

Path SystemFolder() {
  return SpelledPath(
      SystemText([](wchar_t* text, DWORD size, const void*) -> DWORD { return late::GetSystemDirectoryWide(text, size); },
                 [](char* text, DWORD size, const void*) -> DWORD { return ::GetSystemDirectoryA(text, size); }));
}

Path ProgramFile() {
  return SpelledPath(SystemText(
      [](wchar_t* text, DWORD size, const void*) -> DWORD { return late::GetModuleFileNameWide(nullptr, text, size); },
      [](char* text, DWORD size, const void*) -> DWORD { return ::GetModuleFileNameA(nullptr, text, size); }));
}

Path ProgramFolder() { return ProgramFile().Parent(); }

WideText EnvironmentText(WideView name) {
  return SystemText(
      [](wchar_t* text, DWORD size, const void* about) -> DWORD {
        return late::GetEnvironmentVariableWide(static_cast<const wchar_t*>(about), text, size);
      },
      [](char* text, DWORD size, const void* about) -> DWORD {
        return ::GetEnvironmentVariableA(Narrow(static_cast<const wchar_t*>(about)).c_str(), text, size);
      },
      name.data());
}

}  // namespace platform
