// Gives the program a clock that a test holds and moves on: a library that is loaded into the program and takes the place of
// the system's GetTickCount in its import table. The test writes to the file C:\clock.bin, which the library maps.
#include <windows.h>

#include <cstring>

namespace {

struct Clock {
  DWORD held;   // 1: no time passes
  DWORD moved;  // milliseconds that have passed besides
};

volatile Clock* shared = nullptr;
DWORD heldAt = 0;
bool holds = false;

DWORD WINAPI TickCount() {
  const DWORD now = ::GetTickCount();
  if (!shared->held || !holds) heldAt = now;
  holds = shared->held != 0;
  return heldAt + shared->moved;
}

bool MapClock() {
  const HANDLE file = ::CreateFileA("C:\\clock.bin", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
  const HANDLE mapping = ::CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, sizeof(Clock), nullptr);
  shared = static_cast<volatile Clock*>(::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Clock)));
  return shared != nullptr;
}

template <typename Record>
Record* At(std::size_t place) {
  return reinterpret_cast<Record*>(reinterpret_cast<char*>(::GetModuleHandleA(nullptr)) + place);
}

bool Replace(IMAGE_THUNK_DATA& entry) {
  DWORD before = 0;
  if (!::VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &before)) return false;
  entry.u1.Function = reinterpret_cast<DWORD>(&TickCount);
  return true;
}

bool ReplaceImport() {
  const auto& headers = *At<IMAGE_NT_HEADERS>(static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
  const DWORD imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(imports); library->Name != 0; ++library) {
    auto* entry = At<IMAGE_THUNK_DATA>(library->FirstThunk);
    for (auto* name = At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk); name->u1.AddressOfData != 0; ++name, ++entry)
      if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) &&
          std::strcmp(At<IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData)->Name, "GetTickCount") == 0)
        return Replace(*entry);
  }
  return false;
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  return reason != DLL_PROCESS_ATTACH || (MapClock() && ReplaceImport());
}
