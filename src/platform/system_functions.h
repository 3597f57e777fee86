// The table of late-bound system functions, one line each, with the first system that has it.
#pragma once

#include "platform/late_binding.h"
#include "platform/win32.h"

#include <commdlg.h>
#include <shellapi.h>
#include <winternl.h>

namespace platform {

struct ItemIdList;  // the shell's ITEMIDLIST; only its address matters

namespace late {

// Internet Explorer 4 or the first system that came with it.
inline const LateFunction<DWORD(WINAPI*)(HKEY, LPCSTR)> SHDeleteKey{"shlwapi.dll", "SHDeleteKeyA"};
inline const LateFunction<HRESULT(WINAPI*)(HWND, LPCSTR, DWORD)> SHEmptyRecycleBin{"shell32.dll", "SHEmptyRecycleBinA"};
inline const LateFunction<HRESULT(WINAPI*)(LPCSTR, SHQUERYRBINFO*)> SHQueryRecycleBin{"shell32.dll", "SHQueryRecycleBinA"};

// Every system has these. They are bound late because loading the shell takes longer than making the main window, and
// nothing needs it before the window is on the screen.
inline const LateFunction<BOOL(WINAPI*)(DWORD, NOTIFYICONDATAA*)> ShellNotifyIcon{"shell32.dll", "Shell_NotifyIconA"};
inline const LateFunction<HINSTANCE(WINAPI*)(HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT)> ShellOpen{"shell32.dll",
                                                                                                   "ShellExecuteA"};
inline const LateFunction<HINSTANCE(WINAPI*)(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT)> ShellOpenWide{"shell32.dll",
                                                                                                           "ShellExecuteW"};
inline const LateFunction<void(WINAPI*)(UINT, const void*)> SHAddToRecentDocs{"shell32.dll", "SHAddToRecentDocs"};
inline const LateFunction<HRESULT(WINAPI*)(HWND, int, ItemIdList**)> SHGetSpecialFolderLocation{
    "shell32.dll", "SHGetSpecialFolderLocation"};
inline const LateFunction<BOOL(WINAPI*)(const ItemIdList*, LPSTR)> SHGetPathFromIDList{"shell32.dll",
                                                                                       "SHGetPathFromIDListA"};
inline const LateFunction<BOOL(WINAPI*)(const ItemIdList*, LPWSTR)> SHGetPathFromIDListWide{"shell32.dll",
                                                                                            "SHGetPathFromIDListW"};
inline const LateFunction<UINT(WINAPI*)(HDROP, UINT, LPWSTR, UINT)> DragQueryFileWide{"shell32.dll", "DragQueryFileW"};
inline const LateFunction<UINT(WINAPI*)(HDROP, UINT, LPSTR, UINT)> DragQueryFile{"shell32.dll", "DragQueryFileA"};
inline const LateFunction<BOOL(WINAPI*)(HDROP, POINT*)> DragQueryPoint{"shell32.dll", "DragQueryPoint"};
inline const LateFunction<void(WINAPI*)(HDROP)> DragFinish{"shell32.dll", "DragFinish"};
inline const LateFunction<BOOL(WINAPI*)(OPENFILENAMEW*)> GetOpenFileNameWide{"comdlg32.dll", "GetOpenFileNameW"};
inline const LateFunction<BOOL(WINAPI*)(OPENFILENAMEA*)> GetOpenFileName{"comdlg32.dll", "GetOpenFileNameA"};
inline const LateFunction<DWORD(WINAPI*)()> CommDlgExtendedError{"comdlg32.dll", "CommDlgExtendedError"};
inline const LateFunction<HRESULT(WINAPI*)(void*)> CoInitialize{"ole32.dll", "CoInitialize"};
inline const LateFunction<void(WINAPI*)()> CoUninitialize{"ole32.dll", "CoUninitialize"};
inline const LateFunction<void(WINAPI*)(void*)> CoTaskMemFree{"ole32.dll", "CoTaskMemFree"};
inline const LateFunction<HRESULT(WINAPI*)(const GUID&, void*, DWORD, const GUID&, void**)> CoCreateInstance{
    "ole32.dll", "CoCreateInstance"};
inline const LateFunction<INT(WINAPI*)(SYSTEMTIME*, double*)> SystemTimeToVariantTime{"oleaut32.dll",
                                                                                      "SystemTimeToVariantTime"};

// Internet Explorer 3. A handle is an opaque pointer; null is none.
inline const LateFunction<void*(WINAPI*)(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD)> InternetOpen{"wininet.dll", "InternetOpenA"};
inline const LateFunction<void*(WINAPI*)(void*, LPCSTR, LPCSTR, DWORD, DWORD, DWORD_PTR)> InternetOpenUrl{
    "wininet.dll", "InternetOpenUrlA"};
inline const LateFunction<BOOL(WINAPI*)(void*, DWORD, void*, DWORD)> InternetSetOption{"wininet.dll", "InternetSetOptionA"};
inline const LateFunction<BOOL(WINAPI*)(void*)> InternetCloseHandle{"wininet.dll", "InternetCloseHandle"};

// The URL cache. Internet Explorer 3 and 4 have the deletion under the name without the A, 5 and later under both. An entry
// is returned in memory that begins with its information structure (INTERNET_CACHE_ENTRY_INFOA).
inline const LateFunction<HANDLE(WINAPI*)(LPCSTR, void*, DWORD*)> FindFirstUrlCacheEntry{"wininet.dll",
                                                                                         "FindFirstUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE, void*, DWORD*)> FindNextUrlCacheEntry{"wininet.dll",
                                                                                      "FindNextUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE)> FindCloseUrlCache{"wininet.dll", "FindCloseUrlCache"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR)> DeleteUrlCacheEntryA{"wininet.dll", "DeleteUrlCacheEntryA"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR)> DeleteUrlCacheEntry{"wininet.dll", "DeleteUrlCacheEntry"};

// The protected store: Internet Explorer 4 to Windows 7.
inline const LateFunction<HRESULT(WINAPI*)(void**, GUID*, void*, DWORD)> PStoreCreateInstance{"pstorec.dll",
                                                                                              "PStoreCreateInstance"};

// The NT family; Windows 9x exports them as stubs that fail.
inline const LateFunction<BOOL(WINAPI*)(HANDLE, DWORD, HANDLE*)> OpenProcessToken{"advapi32.dll", "OpenProcessToken"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE, int, void*, DWORD, DWORD*)> GetTokenInformation{"advapi32.dll",
                                                                                                "GetTokenInformation"};
inline const LateFunction<BOOL(WINAPI*)(LPCSTR, LPCSTR, LUID*)> LookupPrivilegeValue{"advapi32.dll",
                                                                                     "LookupPrivilegeValueA"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE, BOOL, TOKEN_PRIVILEGES*, DWORD, TOKEN_PRIVILEGES*, DWORD*)>
    AdjustTokenPrivileges{"advapi32.dll", "AdjustTokenPrivileges"};

// The NT family; Windows 9x exports them as stubs that fail, which UsesWideNames() of wide_system.h finds out.
inline const LateFunction<DWORD(WINAPI*)(LPCWSTR)> GetFileAttributesWide{"kernel32.dll", "GetFileAttributesW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, DWORD)> SetFileAttributesWide{"kernel32.dll", "SetFileAttributesW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, GET_FILEEX_INFO_LEVELS, void*)> GetFileAttributesExWide{
    "kernel32.dll", "GetFileAttributesExW"};
inline const LateFunction<HANDLE(WINAPI*)(LPCWSTR, WIN32_FIND_DATAW*)> FindFirstFileWide{"kernel32.dll", "FindFirstFileW"};
inline const LateFunction<BOOL(WINAPI*)(HANDLE, WIN32_FIND_DATAW*)> FindNextFileWide{"kernel32.dll", "FindNextFileW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR)> DeleteFileWide{"kernel32.dll", "DeleteFileW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR)> RemoveDirectoryWide{"kernel32.dll", "RemoveDirectoryW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, SECURITY_ATTRIBUTES*)> CreateDirectoryWide{"kernel32.dll",
                                                                                            "CreateDirectoryW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, LPCWSTR, DWORD)> MoveFileExWide{"kernel32.dll", "MoveFileExW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, LPCWSTR, SECURITY_ATTRIBUTES*)> CreateHardLinkWide{"kernel32.dll",
                                                                                                    "CreateHardLinkW"};
inline const LateFunction<HANDLE(WINAPI*)(LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE)> CreateFileWide{
    "kernel32.dll", "CreateFileW"};
inline const LateFunction<DWORD(WINAPI*)(LPCWSTR, DWORD, LPWSTR, LPWSTR*)> GetFullPathNameWide{"kernel32.dll",
                                                                                               "GetFullPathNameW"};
inline const LateFunction<DWORD(WINAPI*)(LPCWSTR, LPWSTR, DWORD)> GetShortPathNameWide{"kernel32.dll", "GetShortPathNameW"};
inline const LateFunction<DWORD(WINAPI*)(HMODULE, LPWSTR, DWORD)> GetModuleFileNameWide{"kernel32.dll",
                                                                                        "GetModuleFileNameW"};
inline const LateFunction<UINT(WINAPI*)(LPWSTR, UINT)> GetWindowsDirectoryWide{"kernel32.dll", "GetWindowsDirectoryW"};
inline const LateFunction<UINT(WINAPI*)(LPWSTR, UINT)> GetSystemDirectoryWide{"kernel32.dll", "GetSystemDirectoryW"};
inline const LateFunction<DWORD(WINAPI*)(DWORD, LPWSTR)> GetTempPathWide{"kernel32.dll", "GetTempPathW"};
inline const LateFunction<DWORD(WINAPI*)(DWORD, LPWSTR)> GetCurrentDirectoryWide{"kernel32.dll", "GetCurrentDirectoryW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR)> SetCurrentDirectoryWide{"kernel32.dll", "SetCurrentDirectoryW"};
inline const LateFunction<DWORD(WINAPI*)(LPCWSTR, LPWSTR, DWORD)> GetEnvironmentVariableWide{"kernel32.dll",
                                                                                             "GetEnvironmentVariableW"};
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, void*,
                                        LPCWSTR, STARTUPINFOW*, PROCESS_INFORMATION*)>
    CreateProcessWide{"kernel32.dll", "CreateProcessW"};
inline const LateFunction<INT(WINAPI*)(LCID, DWORD, LPCWSTR, INT, LPCWSTR, INT)> CompareStringWide{"kernel32.dll",
                                                                                                   "CompareStringW"};
inline const LateFunction<DWORD(WINAPI*)(LPWSTR, DWORD)> CharUpperBuffWide{"user32.dll", "CharUpperBuffW"};
inline const LateFunction<INT(WINAPI*)(HDC, LPWSTR, INT, RECT*, UINT)> DrawTextWide{"user32.dll", "DrawTextW"};
inline const LateFunction<LRESULT(WINAPI*)(HWND, UINT, WPARAM, LPARAM)> SendMessageWide{"user32.dll", "SendMessageW"};
inline const LateFunction<HWND(WINAPI*)(HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM)> CreateDialogParamWide{
    "user32.dll", "CreateDialogParamW"};
inline const LateFunction<LONG(WINAPI*)(HKEY, LPCWSTR, DWORD, REGSAM, HKEY*)> RegOpenKeyExWide{"advapi32.dll",
                                                                                               "RegOpenKeyExW"};
inline const LateFunction<LONG(WINAPI*)(HKEY, LPCWSTR, DWORD*, DWORD*, BYTE*, DWORD*)> RegQueryValueExWide{
    "advapi32.dll", "RegQueryValueExW"};
inline const LateFunction<LONG(WINAPI*)(HKEY, DWORD, LPWSTR, DWORD*, DWORD*, DWORD*, BYTE*, DWORD*)> RegEnumValueWide{
    "advapi32.dll", "RegEnumValueW"};
inline const LateFunction<LONG(WINAPI*)(HKEY, LPCWSTR)> RegDeleteValueWide{"advapi32.dll", "RegDeleteValueW"};
inline const LateFunction<LONG(WINAPI*)(HKEY, DWORD, LPWSTR, DWORD*, DWORD*, LPWSTR, DWORD*, FILETIME*)> RegEnumKeyExWide{
    "advapi32.dll", "RegEnumKeyExW"};

// The NT family.
inline const LateFunction<LONG(WINAPI*)(HKEY)> NtDeleteKey{"ntdll.dll", "NtDeleteKey"};
inline const LateFunction<LONG(WINAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, IO_STATUS_BLOCK*, ULONG, ULONG)>
    NtOpenFile{"ntdll.dll", "NtOpenFile"};
inline const LateFunction<LONG(WINAPI*)(HANDLE, HANDLE, void*, void*, IO_STATUS_BLOCK*, void*, ULONG, ULONG, ULONG,
                                        UNICODE_STRING*, ULONG)>
    NtQueryDirectoryFile{"ntdll.dll", "NtQueryDirectoryFile"};
inline const LateFunction<LONG(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, ULONG)> NtQueryInformationFile{
    "ntdll.dll", "NtQueryInformationFile"};
inline const LateFunction<LONG(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, ULONG)> NtSetInformationFile{
    "ntdll.dll", "NtSetInformationFile"};
inline const LateFunction<ULONG(WINAPI*)(LONG)> RtlNtStatusToDosError{"ntdll.dll", "RtlNtStatusToDosError"};

// Windows 2000.
inline const LateFunction<BOOL(WINAPI*)(LPCWSTR, LPWSTR, DWORD)> GetVolumePathName{"kernel32.dll", "GetVolumePathNameW"};

// Windows XP.
inline const LateFunction<BOOL(WINAPI*)(HANDLE, int, void*, SIZE_T)> HeapSetInformation{"kernel32.dll",
                                                                                        "HeapSetInformation"};

// Windows XP with its first service pack.
inline const LateFunction<BOOL(WINAPI*)(LPCSTR)> SetDllDirectory{"kernel32.dll", "SetDllDirectoryA"};

// Windows XP with its third service pack.
inline const LateFunction<BOOL(WINAPI*)(DWORD)> SetProcessDEPPolicy{"kernel32.dll", "SetProcessDEPPolicy"};

// Windows Vista.
inline const LateFunction<BOOL(WINAPI*)(HWND, LPCWSTR)> ShutdownBlockReasonCreate{"user32.dll", "ShutdownBlockReasonCreate"};
inline const LateFunction<BOOL(WINAPI*)(UINT, DWORD)> ChangeWindowMessageFilter{"user32.dll", "ChangeWindowMessageFilter"};
inline const LateFunction<BOOL(WINAPI*)(HWND)> ShutdownBlockReasonDestroy{"user32.dll", "ShutdownBlockReasonDestroy"};
inline const LateFunction<DWORD(WINAPI*)(HANDLE, LPWSTR, DWORD, DWORD)> GetFinalPathNameByHandle{
    "kernel32.dll", "GetFinalPathNameByHandleW"};

// Windows 8, and earlier ones from Vista on with an update of 2011.
inline const LateFunction<BOOL(WINAPI*)(DWORD)> SetDefaultDllDirectories{"kernel32.dll", "SetDefaultDllDirectories"};

// Windows 98 and NT 4.
inline const LateFunction<BOOL(WINAPI*)(LPCSTR, GET_FILEEX_INFO_LEVELS, void*)> GetFileAttributesEx{"kernel32.dll",
                                                                                                    "GetFileAttributesExA"};

// Windows 9x only.
inline const LateFunction<DWORD(WINAPI*)(DWORD, DWORD)> RegisterServiceProcess{"kernel32.dll", "RegisterServiceProcess"};

}  // namespace late

}  // namespace platform
