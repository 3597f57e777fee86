// Which files the program under test looks at and deletes by name, whether by wide names or by ANSI names. Like late_calls.h
// for the one source of a test.
#pragma once

#include <bit>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "import_hook.h"
#include "late_calls.h"
#include "platform/native_files.h"
#include "platform/system_functions.h"

// One at a time. The test's own calls count too, so the lists are to be taken before it makes any.
class FileCalls {
 public:
  FileCalls() { Reset(); }
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;
  ~FileCalls() { Reset(); }

  std::vector<std::string> LookedAt() const { return lookedAt_; }
  std::vector<std::string> Deleted() const { return deleted_; }  // also what could not be

  // From now on this path, whatever it leads to, looks like a reparse point of this kind, at first a symbolic link.
  void ShowAsLink(const std::string& path, DWORD tag = 0xA000000C) const { link_ = path, tag_ = tag; }

  // `action` runs after each deletion with the path.
  void AfterEachDeletion(std::function<void(const std::string& path)> action) const { action_ = std::move(action); }

 private:
  static void Reset() {
    lookedAt_.clear();
    deleted_.clear();
    action_ = nullptr;
    link_.clear();
  }

  // Without the "\\?\" of a wide one.
  static std::string Plain(const std::wstring& path) {
    std::string plain;
    for (const wchar_t c : path) plain += c < 0x80 ? static_cast<char>(c) : '?';
    return plain.rfind("\\\\?\\", 0) == 0 ? plain.substr(4) : plain;
  }

  static BOOL Noted(const std::string& path, BOOL result) {
    deleted_.push_back(path);
    const DWORD error = ::GetLastError();
    if (action_) action_(path);
    ::SetLastError(error);
    return result;
  }

  static DWORD Looked(const std::string& path, DWORD attributes) {
    lookedAt_.push_back(path);
    return path == link_ ? attributes | FILE_ATTRIBUTE_REPARSE_POINT : attributes;
  }

  static DWORD WINAPI LookWide(LPCWSTR path) { return Looked(Plain(path), ::GetFileAttributesW(path)); }
  static DWORD WINAPI LookAnsi(LPCSTR path) { return Looked(path, systemLook_(path)); }
  static HANDLE WINAPI FindWide(LPCWSTR path, WIN32_FIND_DATAW* found) {
    const HANDLE find = ::FindFirstFileW(path, found);
    if (find != INVALID_HANDLE_VALUE && Plain(path) == link_) {
      found->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
      found->dwReserved0 = tag_;
    }
    return find;
  }
  static BOOL WINAPI DeleteWide(LPCWSTR path) { return Noted(Plain(path), ::DeleteFileW(path)); }
  static BOOL WINAPI DeleteAnsi(LPCSTR path) { return Noted(path, systemDelete_(path)); }

  // What is deleted by its handle is told by the path that this leads to.
  static std::string PathOf(HANDLE file) {
    wchar_t path[0x8000] = L"";
    late::GetFinalPathNameByHandle(file, path, 0x8000, 0);
    return Plain(path);
  }
  // The shredder's way, and the one of what deletes in an open folder; it is gone when the handle is closed.
  static LONG WINAPI SetInformation(HANDLE file, IO_STATUS_BLOCK* io, void* what, ULONG size, ULONG kind) {
    using Function = LONG(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, ULONG);
    constexpr ULONG kDisposition = 13;
    static const auto system = std::bit_cast<Function>(TrueFunction("ntdll.dll", "NtSetInformationFile"));
    BY_HANDLE_FILE_INFORMATION found;
    const bool isFile =
        kind == kDisposition && ::GetFileInformationByHandle(file, &found) && !IsFolder(found.dwFileAttributes);
    const std::string path = isFile ? PathOf(file) : std::string();
    const LONG status = system(file, io, what, size, kind);
    if (isFile) Noted(path, TRUE);
    return status;
  }
  static LONG WINAPI QueryInformation(HANDLE file, IO_STATUS_BLOCK* io, void* what, ULONG size, ULONG kind) {
    using Function = LONG(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, ULONG);
    constexpr ULONG kBasic = 4;
    static const auto system = std::bit_cast<Function>(TrueFunction("ntdll.dll", "NtQueryInformationFile"));
    const LONG status = system(file, io, what, size, kind);
    if (status >= 0 && kind == kBasic && !link_.empty() && PathOf(file) == link_)
      static_cast<FILE_BASIC_INFORMATION*>(what)->FileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    return status;
  }
  static LONG WINAPI OpenFile(HANDLE* file, ACCESS_MASK access, OBJECT_ATTRIBUTES* object, IO_STATUS_BLOCK* io, ULONG share,
                              ULONG options) {
    using Function = LONG(WINAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, IO_STATUS_BLOCK*, ULONG, ULONG);
    constexpr ULONG kDeleteOnClose = 0x1000;
    static const auto system = std::bit_cast<Function>(TrueFunction("ntdll.dll", "NtOpenFile"));
    const LONG status = system(file, access, object, io, share, options);
    if (status >= 0 && (options & kDeleteOnClose) != 0) Noted(PathOf(*file), TRUE);
    return status;
  }

  static inline const auto systemLook_ = importedGetFileAttributesA;
  static inline const auto systemDelete_ = importedDeleteFileA;
  static inline std::vector<std::string> lookedAt_, deleted_;
  static inline std::function<void(const std::string&)> action_;
  static inline std::string link_;
  static inline DWORD tag_;
  static inline const bool replaced_ =
      (ReplaceFunction("GetFileAttributesW", &LookWide), ReplaceFunction("DeleteFileW", &DeleteWide),
       ReplaceFunction("FindFirstFileW", &FindWide), ReplaceFunction("NtSetInformationFile", &SetInformation),
       ReplaceFunction("NtQueryInformationFile", &QueryInformation), ReplaceFunction("NtOpenFile", &OpenFile), true);

  const ImportHook<decltype(importedGetFileAttributesA)> looking_{importedGetFileAttributesA, &LookAnsi};
  const ImportHook<decltype(importedDeleteFileA)> deleting_{importedDeleteFileA, &DeleteAnsi};
};
