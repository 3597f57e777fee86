// What a process holds of the system, told from outside.
#pragma once

#include "probe_basics.h"
#include "probe_windows.h"

#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <string>
#include <vector>

// The entries of the system's table of handles that are the process's.
inline int handlesOf(DWORD pid) {
  constexpr ULONG kHandles = 16;  // SystemHandleInformation: a count, then entries of 16 bytes that begin with the process
  std::vector<std::uint32_t> table(1 << 18);
  ULONG size = 0;
  using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
  const auto query = reinterpret_cast<Query>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  if (query(kHandles, table.data(), static_cast<ULONG>(table.size() * sizeof table[0]), &size) < 0) return -1;
  int count = 0;
  for (std::uint32_t i = 0; i < table[0]; ++i) count += table[1 + 4 * i] == pid;
  return count;
}

// The used entries of its table of graphics objects, which every process can be asked for: what a program makes (bitmaps,
// fonts, brushes, pens), and what comes and goes with the painting of windows (device contexts, regions).
struct GraphicsObjects {
  int made = 0, ofPainting = 0;
};

inline GraphicsObjects graphicsObjectsOf(DWORD pid) {
  struct Entry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type, flags;
    std::uint64_t user;
  };
  static_assert(sizeof(Entry) == 24);
  constexpr std::size_t kEntries = 0x10000, kTableInBlock = 0x94;
  constexpr std::uint8_t kKind = 0x1F, kContext = 1, kRegion = 4;
  const HANDLE process = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, pid);
  PROCESS_BASIC_INFORMATION basic{};
  ULONG got = 0;
  ::NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, &got);
  std::uint32_t table = 0;
  SIZE_T read = 0;
  const auto block = reinterpret_cast<const char*>(basic.PebBaseAddress);
  ::ReadProcessMemory(process, block + kTableInBlock, &table, sizeof table, &read);
  std::vector<Entry> entries(kEntries);
  const bool known = table != 0 && ::ReadProcessMemory(process, reinterpret_cast<void*>(table), entries.data(),
                                                       sizeof(Entry) * kEntries, &read);
  ::CloseHandle(process);
  if (!known) return {-1, -1};
  GraphicsObjects count;
  for (const Entry& entry : entries) {
    const int kind = entry.type & kKind;
    if (kind != 0) ++(kind == kContext || kind == kRegion ? count.ofPainting : count.made);
  }
  return count;
}

inline int windowsOf(DWORD pid) {
  int count = 0;
  for (const HWND window : topWindows()) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner == pid) count += 1 + static_cast<int>(descendants(window).size());
  }
  return count;
}

inline std::string resources(const Words& words) {
  const auto pid = static_cast<DWORD>(toNumber(words.at(1)));
  const GraphicsObjects graphics = graphicsObjectsOf(pid);
  return json::Object()
      .number("handles", handlesOf(pid))
      .number("graphics", graphics.made)
      .number("painting", graphics.ofPainting)
      .number("windows", windowsOf(pid))
      .done();
}
