// A function of a test in the place of one that the program imports. The pointers are the entries of the program's own
// import table.
#pragma once

#include "platform/win32.h"

extern "C" {
extern decltype(&::WriteFile) importedWriteFile __asm__("__imp__WriteFile@20");
extern decltype(&::CreateFileA) importedCreateFileA __asm__("__imp__CreateFileA@28");
extern decltype(&::Sleep) importedSleep __asm__("__imp__Sleep@4");
extern decltype(&::GetTickCount) importedGetTickCount __asm__("__imp__GetTickCount@0");
extern decltype(&::GetLocalTime) importedGetLocalTime __asm__("__imp__GetLocalTime@4");
extern decltype(&::FlushFileBuffers) importedFlushFileBuffers __asm__("__imp__FlushFileBuffers@4");
extern decltype(&::DeleteFileA) importedDeleteFileA __asm__("__imp__DeleteFileA@4");
extern decltype(&::GetFileAttributesA) importedGetFileAttributesA __asm__("__imp__GetFileAttributesA@4");
extern decltype(&::RemoveDirectoryA) importedRemoveDirectoryA __asm__("__imp__RemoveDirectoryA@4");
extern decltype(&::SetFileAttributesA) importedSetFileAttributesA __asm__("__imp__SetFileAttributesA@8");
extern decltype(&::GetModuleFileNameA) importedGetModuleFileNameA __asm__("__imp__GetModuleFileNameA@12");
extern decltype(&::GetFileInformationByHandle) importedGetFileInformationByHandle __asm__(
    "__imp__GetFileInformationByHandle@8");
extern decltype(&::QueryDosDeviceA) importedQueryDosDeviceA __asm__("__imp__QueryDosDeviceA@12");
extern decltype(&::DeviceIoControl) importedDeviceIoControl __asm__("__imp__DeviceIoControl@32");
}

template <class Function>
class ImportHook {
 public:
  ImportHook(Function& import, Function replacement) : import_(import), original_(import) { Import(replacement); }
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;
  ~ImportHook() { Import(original_); }

 private:
  // A linker may put the entries where nobody writes.
  void Import(Function function) {
    DWORD before = 0;
    ::VirtualProtect(&import_, sizeof import_, PAGE_READWRITE, &before);
    import_ = function;
    ::VirtualProtect(&import_, sizeof import_, before, &before);
  }

  Function& import_;
  Function original_;
};
