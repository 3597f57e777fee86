// A library that is loaded into the program before it runs: it replaces entries of the program's import table and the
// answers that it gets from GetProcAddress. Beside the library lies rules.txt, as standin.py writes it; it writes calls.txt.
// Only the program itself sees any difference.
#include "standin.h"

#include <fstream>

namespace {

std::map<std::string, Function> functions;

// "F" and a function with what is known of it, then each of its rules after an "R".
void ReadRules(const std::string& path) {
  std::ifstream file(path);
  Function* function = nullptr;
  for (std::string what, name; file >> what >> name;) {
    if (what == "F") {
      function = &functions[name];
      function->name = name;
      file >> function->kinds >> function->bytesToPop >> function->failing >> function->failingValue >> function->missing >>
          function->logged;
      if (function->kinds == "-") function->kinds.clear();
      continue;
    }
    Rule& rule = function->rules.emplace_back();
    std::size_t count = 0;
    file >> rule.number >> rule.first >> rule.last >> count;
    rule.numbers.resize(count);
    for (std::uint32_t& number : rule.numbers) file >> number;
    file.get();  // the blank before the text
    std::getline(file, rule.with);
    rule.act = kVerbs.at(name);
  }
}

void* Hooked(Function& function, void* real) {
  function.real = real;
  if (function.stub == nullptr) function.stub = MakeStub(function);
  return function.stub;
}

void HookImports() {
  auto* const program = reinterpret_cast<std::uint8_t*>(::GetModuleHandleA(nullptr));
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(program);
  const auto& header = reinterpret_cast<const IMAGE_NT_HEADERS*>(program + dos.e_lfanew)->OptionalHeader;
  const DWORD table = header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(program + table); library->Name != 0; ++library) {
    auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(program + library->OriginalFirstThunk);
    auto* place = reinterpret_cast<void**>(program + library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* by = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(program + name->u1.AddressOfData);
      const auto found = functions.find(reinterpret_cast<const char*>(by->Name));
      if (found == functions.end()) continue;
      DWORD before = 0;
      ::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
      *place = Hooked(found->second, *place);
      ::VirtualProtect(place, sizeof *place, before, &before);
    }
  }
}

}  // namespace

Acted BindLate(Call& call, const Rule&) {
  const bool byName = call.Argument(1) > 0xFFFF;
  const auto found = byName ? functions.find(call.Pointer<char>(1)) : functions.end();
  if (found == functions.end()) return Acted::No;
  if (found->second.missing) return call.Answer(0, ERROR_PROC_NOT_FOUND);
  call.MakeReal();
  if (!call.Succeeded()) return Acted::Instead;
  void* const stub = Hooked(found->second, reinterpret_cast<void*>(call.Result()));
  return call.Answer(reinterpret_cast<std::uintptr_t>(stub), ERROR_SUCCESS);
}

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(library, path, MAX_PATH);
  const std::string file = path, folder = file.substr(0, file.rfind('\\') + 1);
  try {
    ReadRules(folder + "rules.txt");
    OpenCallLog(folder + "calls.txt");
    HookImports();
  } catch (...) {
    return FALSE;  // the program is not to run
  }
  return TRUE;
}
