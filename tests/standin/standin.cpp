// A library that the launcher loads into the program before it runs: it replaces entries of the program's import table and
// the answers that it gets from GetProcAddress. Beside the library lie functions.txt and rules.txt; it writes calls.txt, or
// refused.txt when the program is not to start. Nothing but the program itself sees any difference.
#include <fstream>
#include <string_view>

#include "function.h"

namespace {

FunctionTable functions;
std::map<std::string, void**> imports;  // by the function's name, their places in the program's table

const std::uint8_t* Program() { return reinterpret_cast<const std::uint8_t*>(::GetModuleHandleA(nullptr)); }

const IMAGE_OPTIONAL_HEADER& Header() {
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(Program());
  return reinterpret_cast<const IMAGE_NT_HEADERS*>(Program() + dos.e_lfanew)->OptionalHeader;
}

std::map<std::string, void**> FindImports() {
  std::map<std::string, void**> found;
  const DWORD table = Header().DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(Program() + table); library->Name != 0; ++library) {
    auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(Program() + library->OriginalFirstThunk);
    auto* address = reinterpret_cast<const IMAGE_THUNK_DATA*>(Program() + library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* by = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(Program() + name->u1.AddressOfData);
      const void* const place = &address->u1.Function;
      found[reinterpret_cast<const char*>(by->Name)] = static_cast<void**>(const_cast<void*>(place));
    }
  }
  return found;
}

bool HoldsText(const std::string& text) {
  const std::string_view image(reinterpret_cast<const char*>(Program()), Header().SizeOfImage);
  return image.find(std::string_view(text.c_str(), text.size() + 1)) != std::string_view::npos;  // with its zero
}

bool IsCalled(const std::string& function) { return imports.count(function) != 0 || HoldsText(function); }

void* Hooked(Function& function, void* real) {
  function.real = real;
  if (function.stub == nullptr) function.stub = MakeStub(function);
  return function.stub;
}

void HookImport(Function& function, void** place) {
  if (function.missing) throw Refusal{function.name + " missing: the program imports it and would not be loaded without it"};
  DWORD before = 0;
  if (!::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before)) throw Refusal{"cannot replace " + function.name};
  *place = Hooked(function, *place);
  ::VirtualProtect(place, sizeof *place, before, &before);
}

Acted BindLate(Call& call, const Rule&) {
  const bool byName = call.Argument(1) > 0xFFFF;
  const auto found = byName ? functions.find(call.Pointer<char>(1)) : functions.end();
  if (found == functions.end() || found->second.rules.empty()) return Acted::No;
  Function& function = found->second;
  if (function.missing) {
    call.Fail(ERROR_PROC_NOT_FOUND);
    return Acted::Instead;
  }
  call.MakeReal();
  void* const stub = call.Succeeded() ? Hooked(function, reinterpret_cast<void*>(call.Result())) : nullptr;
  if (stub != nullptr) call.Answer(reinterpret_cast<std::uintptr_t>(stub), ERROR_SUCCESS);
  return Acted::Instead;
}

void Start(const std::string& folder) {
  functions = ReadFunctions(folder + "functions.txt");
  imports = FindImports();
  OpenCallLog(folder + "calls.txt");
  ReadRules(folder + "rules.txt", functions, &IsCalled);
  Function& lookUp = functions.at("GetProcAddress");
  lookUp.logged = true;
  Rule bindLate;
  bindLate.act = &BindLate;
  lookUp.rules.push_back(bindLate);
  for (auto& [name, function] : functions)
    if (const auto place = imports.find(name); place != imports.end() && !function.rules.empty())
      HookImport(function, place->second);
}

std::string FolderOf(HINSTANCE library) {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(library, path, MAX_PATH);
  const std::string file = path;
  return file.substr(0, file.rfind('\\') + 1);
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  const std::string folder = FolderOf(library);
  try {
    Start(folder);
  } catch (const Refusal& refusal) {
    std::ofstream(folder + "refused.txt") << refusal.reason;
    return FALSE;
  }
  return TRUE;
}
