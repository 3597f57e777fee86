#include "platform/late_binding.h"

#include <string>

namespace platform {

namespace {

HMODULE LoadSystemDll(const char* dll) {
  // By full path: a DLL of that name beside the program or in the current folder is never picked up.
  char folder[MAX_PATH];
  const UINT length = ::GetSystemDirectoryA(folder, sizeof folder);
  if (length == 0 || length >= sizeof folder) return nullptr;
  // Where the folder is a root, two "\" are as good as one; on some code pages its last byte may be half of a letter.
  // What the library imports is looked for beside it first, not beside the program or in the current folder.
  return ::LoadLibraryExA((std::string(folder) + "\\" + dll).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

FARPROC FindSystemFunction(const char* dll, const char* name) {
  const HMODULE module = LoadSystemDll(dll);
  return module != nullptr ? ::GetProcAddress(module, name) : nullptr;
}

bool IsSystemDllPresent(const char* dll) { return LoadSystemDll(dll) != nullptr; }

}  // namespace platform
