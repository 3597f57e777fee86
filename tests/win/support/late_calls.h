// A test's own look-up of the functions that are bound late: the program that includes this, in its one source, is linked
// without late_binding.cpp. Chosen functions are replaced; all others are found in the system folder as usual.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/late_binding.h"

using namespace platform;

// The function that takes another one's place, by the other's name; null for a function that the system lacks. Set it
// before the first call: each function is looked up once.
inline std::map<std::string, FARPROC> ReplacedFunctions;

// What was looked up, replaced or not.
inline std::vector<std::string> LookedUpFunctions;

template <class Function>
void ReplaceFunction(const std::string& name, Function* replacement) {
  ReplacedFunctions[name] = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(replacement));
}

inline HMODULE LoadFromSystemFolder(const std::string& dll) {
  char folder[MAX_PATH] = "";
  ::GetSystemDirectoryA(folder, sizeof folder);
  return ::LoadLibraryA((std::string(folder) + "\\" + dll).c_str());
}

inline FARPROC TrueFunction(const char* dll, const char* name) {
  const HMODULE module = LoadFromSystemFolder(dll);
  return module != nullptr ? ::GetProcAddress(module, name) : nullptr;
}

namespace platform {

FARPROC FindSystemFunction(const char* dll, const char* name) {
  LookedUpFunctions.push_back(name);
  const auto replaced = ReplacedFunctions.find(name);
  return replaced != ReplacedFunctions.end() ? replaced->second : TrueFunction(dll, name);
}

bool IsSystemDllPresent(const char* dll) { return LoadFromSystemFolder(dll) != nullptr; }

}  // namespace platform
