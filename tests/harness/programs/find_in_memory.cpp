// Looks for a text in the memory of another process, in wide characters and in single bytes, and prints a line for each
// place: its address, that of the region, its size and kind.
//
//   find_in_memory.exe PROCESS TEXT
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void Look(const MEMORY_BASIC_INFORMATION& region, const std::string& memory, const std::string& text, const char* form) {
  for (std::size_t at = memory.find(text); at != std::string::npos; at = memory.find(text, at + 1))
    std::printf("%s %p in %p %lx type %lx\n", form, static_cast<char*>(region.BaseAddress) + at, region.BaseAddress,
                static_cast<unsigned long>(region.RegionSize), region.Type);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const HANDLE process =
      ::OpenProcess(PROCESS_VM_READ | PROCESS_QUERY_INFORMATION, FALSE, std::strtoul(arguments[1], nullptr, 10));
  if (process == nullptr) return 3;
  const std::string narrow = arguments[2];
  std::string wide;
  for (const char letter : narrow) wide.append(1, letter).append(1, '\0');
  MEMORY_BASIC_INFORMATION region;
  for (char* at = nullptr; ::VirtualQueryEx(process, at, &region, sizeof region) != 0;
       at = static_cast<char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && (region.Protect & (PAGE_GUARD | PAGE_NOACCESS)) == 0) {
      std::string memory(region.RegionSize, '\0');
      SIZE_T read = 0;
      ::ReadProcessMemory(process, region.BaseAddress, memory.data(), memory.size(), &read);
      memory.resize(read);
      Look(region, memory, wide, "wide");
      Look(region, memory, narrow, "bytes");
    }
    if (static_cast<char*>(region.BaseAddress) + region.RegionSize < at) break;
  }
}
