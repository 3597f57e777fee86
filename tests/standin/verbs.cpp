// What rules do about a call.
#include <algorithm>

#include "standin.h"

namespace {

Acted Answer(Call& call, const Rule& rule) { return call.Answer(rule.numbers[0], rule.numbers[1]); }

Acted Slow(Call&, const Rule& rule) {
  ::Sleep(rule.numbers[0]);
  return Acted::Beside;
}

// Written down before, since a test may want to see that the program hangs.
Acted Hang(Call& call, const Rule& rule) {
  call.WriteDown("hangs");
  return Slow(call, rule);
}

// Numbers into the record that the function has filled: argument, first word, values.
Acted Put(Call& call, const Rule& rule) {
  call.MakeReal();
  std::copy(rule.numbers.begin() + 2, rule.numbers.end(), call.Pointer<std::uint32_t>(rule.numbers[0]) + rule.numbers[1]);
  return Acted::Instead;
}

// The process ends here and now. With a number, the argument of that number is halved and the call made before: a size, of
// which half is written.
Acted Kill(Call& call, const Rule& rule) {
  call.WriteDown("ends");
  if (!rule.numbers.empty()) {
    call.Argument(rule.numbers[0]) /= 2;
    call.MakeReal();
  }
  ::TerminateProcess(::GetCurrentProcess(), 1);
  return Acted::Instead;
}

Acted Crash(Call&, const Rule&) {
  *reinterpret_cast<volatile int*>(static_cast<std::uintptr_t>(8)) = 0;
  return Acted::Beside;
}

// Time passes so many times as fast.

std::uint64_t SystemTime() {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  return static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
}

const DWORD startTicks = ::GetTickCount();
const std::uint64_t startTime = SystemTime();

Acted QuickTicks(Call& call, const Rule& rule) {
  return call.Answer(startTicks + (::GetTickCount() - startTicks) * rule.numbers[0], ERROR_SUCCESS);
}

Acted QuickLocalTime(Call& call, const Rule& rule) {
  const std::uint64_t shown = startTime + (SystemTime() - startTime) * rule.numbers[0];
  const FILETIME time = {static_cast<DWORD>(shown), static_cast<DWORD>(shown >> 32)};
  FILETIME local;
  ::FileTimeToLocalFileTime(&time, &local);
  ::FileTimeToSystemTime(&local, call.Pointer<SYSTEMTIME>(0));
  return Acted::Instead;
}

// Argument, shortest wait left, shortest wait that is shortened, speed.
Acted QuickWait(Call& call, const Rule& rule) {
  std::uint32_t& asked = call.Argument(rule.numbers[0]);
  if (asked < rule.numbers[2] || asked == INFINITE) return Acted::No;
  asked = std::max(asked / rule.numbers[3], rule.numbers[1]);
  return Acted::Beside;
}

// Links to folders: they tell in a listing what they are, and go when they are removed as a folder.

Acted TagLink(Call& call, const Rule& rule) {
  call.MakeReal();
  auto& found = *call.Pointer<WIN32_FIND_DATAA>(1);  // the wide record begins alike
  if (call.Succeeded() && (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) found.dwReserved0 = rule.numbers[0];
  return Acted::Instead;
}

long LinuxCall(long number, const char* path, char* buffer, long size) {
  long result;
  __asm__ volatile("int $0x80" : "=a"(result) : "a"(number), "b"(path), "c"(buffer), "d"(size) : "memory");
  return result;
}

// By calls of the system that Wine runs on, since Wine itself can neither remove a link nor open it as one.
class UnixPath {
 public:
  explicit UnixPath(std::wstring path) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<UnixName>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (!path.empty() && path.back() == L'\\') path.pop_back();
    char* const name = unixName(path.c_str());
    if (name != nullptr) name_ = name;
    ::HeapFree(::GetProcessHeap(), 0, name);
  }
  bool IsLink() const {
    constexpr long kReadLink = 85;
    char target[2];
    return !name_.empty() && LinuxCall(kReadLink, name_.c_str(), target, 1) >= 0;
  }
  bool Unlink() const {
    constexpr long kUnlink = 10;
    return IsLink() && LinuxCall(kUnlink, name_.c_str(), nullptr, 0) == 0;
  }

 private:
  std::string name_;
};

Acted RemoveLink(Call& call, const Rule&) {
  return UnixPath(call.PathOf()).Unlink() ? call.Answer(TRUE, ERROR_SUCCESS) : Acted::No;
}

// What a handle means that was opened by NtOpenFile without following: the link itself.
std::map<std::uint32_t, UnixPath> openLinks;

Acted TagRecords(Call& call, const Rule& rule) {
  constexpr std::uint32_t kBothDirectory = 3;
  call.MakeReal();
  if (call.Result() != 0 || call.Argument(7) != kBothDirectory) return Acted::Instead;
  // The offset of the next one, then at 56 the attributes and at 64 where the tag is.
  for (char* record = call.Pointer<char>(5);;) {
    auto* const words = reinterpret_cast<std::uint32_t*>(record);
    if ((words[14] & FILE_ATTRIBUTE_REPARSE_POINT) != 0) words[16] = rule.numbers[0];
    if (words[0] == 0) return Acted::Instead;
    record += words[0];
  }
}

Acted OpenLink(Call& call, const Rule&) {
  constexpr std::uint32_t kUnfollowed = 0x200000;
  const auto& named = *call.Pointer<OBJECT_ATTRIBUTES>(2);
  using FinalPath = DWORD(WINAPI*)(HANDLE, wchar_t*, DWORD, DWORD);
  const auto finalPath = reinterpret_cast<FinalPath>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "GetFinalPathNameByHandleW")));
  wchar_t folder[1024] = L"";
  finalPath(named.RootDirectory, folder, 1024, 0);
  const std::wstring name(named.ObjectName->Buffer, named.ObjectName->Length / sizeof(wchar_t));
  const UnixPath path(folder + (L'\\' + name));
  if ((call.Argument(5) & kUnfollowed) == 0 || !path.IsLink()) return Acted::No;
  const HANDLE any = ::CreateFileW(folder, 0, 7, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  *call.Pointer<HANDLE>(0) = any;
  openLinks.insert_or_assign(reinterpret_cast<std::uint32_t>(any), path);
  return call.Answer(0, ERROR_SUCCESS);
}

Acted RemoveOpenLink(Call& call, const Rule&) {
  constexpr std::uint32_t kDisposition = 13;
  const auto link = openLinks.find(call.Argument(0));
  if (link == openLinks.end() || call.Argument(4) != kDisposition) return Acted::No;
  return link->second.Unlink() ? call.Answer(0, ERROR_SUCCESS) : Acted::No;
}

Acted ShowOpenLink(Call& call, const Rule&) {
  if (openLinks.count(call.Argument(0)) == 0) return Acted::No;
  call.MakeReal();
  call.Pointer<BY_HANDLE_FILE_INFORMATION>(1)->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
  return Acted::Instead;
}

Acted ForgetOpenLink(Call& call, const Rule&) {
  openLinks.erase(call.Argument(0));
  return Acted::No;
}

// What Windows 9x does otherwise.

Acted RefuseSharedDeletion(Call& call, const Rule&) {
  const bool shared = (call.Argument(2) & FILE_SHARE_DELETE) != 0;
  return shared ? call.Answer(~0u, ERROR_INVALID_PARAMETER) : Acted::No;
}

Acted RefuseFolder(Call& call, const Rule&) {
  const DWORD attributes = ::GetFileAttributesW(call.PathOf().c_str());
  const bool folder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return folder ? call.Answer(~0u, ERROR_ACCESS_DENIED) : Acted::No;
}

Acted DeleteWithSubkeys(Call& call, const Rule&) {
  void* const deleteTree = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("advapi32.dll"), "RegDeleteTreeA"));
  return call.Answer(static_cast<std::uint32_t>(StandinCall(deleteTree, &call.Argument(0), 2)), ERROR_SUCCESS);
}

}  // namespace

const std::map<std::string, Act> kVerbs = {
    {"answer", &Answer},
    {"slow", &Slow},
    {"hang", &Hang},
    {"put", &Put},
    {"kill", &Kill},
    {"crash", &Crash},
    {"log", nullptr},
    {"missing", nullptr},
    {"bind-late", &BindLate},
    {"quick-ticks", &QuickTicks},
    {"quick-time", &QuickLocalTime},
    {"quick-wait", &QuickWait},
    {"tag-link", &TagLink},
    {"remove-link", &RemoveLink},
    {"tag-records", &TagRecords},
    {"open-link", &OpenLink},
    {"remove-open-link", &RemoveOpenLink},
    {"show-open-link", &ShowOpenLink},
    {"forget-open-link", &ForgetOpenLink},
    {"refuse-shared-deletion", &RefuseSharedDeletion},
    {"refuse-folder", &RefuseFolder},
    {"delete-with-subkeys", &DeleteWithSubkeys},
};
