// What some systems do otherwise than this one, and how fast time passes.
#include <algorithm>

#include "function.h"

namespace {

// version MAJOR MINOR BUILD PLATFORM

template <class Info>
Acted TellVersion(Call& call, const Rule& rule) {
  call.MakeReal();
  Info& told = *call.Pointer<Info>(0);
  told.dwMajorVersion = rule.numbers[0];
  told.dwMinorVersion = rule.numbers[1];
  told.dwBuildNumber = rule.numbers[2];
  told.dwPlatformId = rule.numbers[3];
  told.szCSDVersion[0] = 0;
  return Acted::Instead;
}

// clock SPEED: time passes so many times as fast.

std::uint64_t SystemTime() {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  return static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
}

const DWORD startTicks = ::GetTickCount();
const std::uint64_t startTime = SystemTime();

Acted QuickTicks(Call& call, const Rule& rule) {
  call.MakeReal();
  call.Answer(startTicks + (call.Result() - startTicks) * rule.numbers[0], ::GetLastError());
  return Acted::Instead;
}

Acted QuickLocalTime(Call& call, const Rule& rule) {
  const std::uint64_t shown = startTime + (SystemTime() - startTime) * rule.numbers[0];
  const FILETIME time = {static_cast<DWORD>(shown), static_cast<DWORD>(shown >> 32)};
  FILETIME local;
  ::FileTimeToLocalFileTime(&time, &local);
  ::FileTimeToSystemTime(&local, call.Pointer<SYSTEMTIME>(0));
  return Acted::Instead;
}

template <std::size_t Index, std::uint32_t Shortest, std::uint32_t From>
Acted QuickWait(Call& call, const Rule& rule) {
  std::uint32_t& asked = call.Argument(Index);
  if (asked < From || asked == INFINITE) return Acted::No;
  asked = std::max(asked / std::max<std::uint32_t>(rule.numbers[0], 1), Shortest);
  return Acted::Beside;
}

// links TAG: a link to a folder tells in a listing what it is, and goes when it is removed as a folder.

template <class Record>
Acted TagLink(Call& call, const Rule& rule) {
  call.MakeReal();
  Record& found = *call.Pointer<Record>(1);
  if (call.Succeeded() && (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) found.dwReserved0 = rule.numbers[0];
  return Acted::Instead;
}

std::wstring PathOf(const Call& call) {
  if (call.Pointer<char>(0) == nullptr) return {};
  if (call.IsWide()) return call.Pointer<wchar_t>(0);
  wchar_t wide[MAX_PATH] = L"";
  ::MultiByteToWideChar(CP_ACP, 0, call.Pointer<char>(0), -1, wide, MAX_PATH - 1);
  return wide;
}

long LinuxCall(long number, const char* path, char* buffer, long size) {
  long result;
  __asm__ volatile("int $0x80" : "=a"(result) : "a"(number), "b"(path), "c"(buffer), "d"(size) : "memory");
  return result;
}

// By a call of the system that Wine runs on, since Wine itself cannot remove a link.
bool Unlink(const std::wstring& path) {
  constexpr long kUnlink = 10, kReadLink = 85;
  using UnixName = char*(CDECL*)(const wchar_t*);
  const auto unixName = reinterpret_cast<UnixName>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
  char* const name = unixName != nullptr ? unixName(path.c_str()) : nullptr;
  char target[2];
  const bool gone =
      name != nullptr && LinuxCall(kReadLink, name, target, 1) >= 0 && LinuxCall(kUnlink, name, nullptr, 0) == 0;
  ::HeapFree(::GetProcessHeap(), 0, name);
  return gone;
}

Acted RemoveLink(Call& call, const Rule&) {
  std::wstring path = PathOf(call);
  if (!path.empty() && path.back() == L'\\') path.pop_back();
  if (!Unlink(path)) return Acted::No;
  call.Answer(TRUE, ERROR_SUCCESS);
  return Acted::Instead;
}

// What Windows 9x does otherwise.

Acted RefuseSharedDeletion(Call& call, const Rule&) {
  if ((call.Argument(2) & FILE_SHARE_DELETE) == 0) return Acted::No;
  call.Fail(ERROR_INVALID_PARAMETER);
  return Acted::Instead;
}

Acted RefuseFolder(Call& call, const Rule&) {
  const DWORD attributes = ::GetFileAttributesW(PathOf(call).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return Acted::No;
  call.Fail(ERROR_ACCESS_DENIED);
  return Acted::Instead;
}

Acted DeleteWithSubkeys(Call& call, const Rule&) {
  const void* const deleteTree =
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("advapi32.dll"), "RegDeleteTreeA"));
  if (deleteTree == nullptr) return Acted::No;
  call.Answer(static_cast<std::uint32_t>(StandinCall(const_cast<void*>(deleteTree), &call.Argument(0), 2)), ERROR_SUCCESS);
  return Acted::Instead;
}

}  // namespace

const std::vector<SpecialRule>& SpecialRules() {
  static const std::vector<SpecialRule> rules = {
      {"version",
       4,
       true,
       {{"GetVersionExA", &TellVersion<OSVERSIONINFOA>}, {"GetVersionExW", &TellVersion<OSVERSIONINFOW>}}},
      {"clock",
       1,
       false,
       {{"GetTickCount", &QuickTicks},
        {"GetLocalTime", &QuickLocalTime},
        {"MsgWaitForMultipleObjects", &QuickWait<3, 1, 1>},
        {"Sleep", &QuickWait<0, 1, 1>},
        {"SetTimer", &QuickWait<2, 10, 1000>}}},  // shorter ones are looks at the keyboard and the like
      {"links",
       1,
       true,
       {{"FindFirstFileA", &TagLink<WIN32_FIND_DATAA>},
        {"FindFirstFileW", &TagLink<WIN32_FIND_DATAW>},
        {"FindNextFileA", &TagLink<WIN32_FIND_DATAA>},
        {"FindNextFileW", &TagLink<WIN32_FIND_DATAW>},
        {"RemoveDirectoryA", &RemoveLink},
        {"RemoveDirectoryW", &RemoveLink}}},
      {"no-shared-deletion", 0, true, {{"CreateFileA", &RefuseSharedDeletion}, {"CreateFileW", &RefuseSharedDeletion}}},
      {"no-folder-handles", 0, true, {{"CreateFileA", &RefuseFolder}, {"CreateFileW", &RefuseFolder}}},
      {"keys-with-subkeys", 0, true, {{"RegDeleteKeyA", &DeleteWithSubkeys}}},
  };
  return rules;
}
