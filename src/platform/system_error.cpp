#include "platform/system_error.h"

#include <algorithm>
#include <iterator>

#include "platform/runtime_error.h"

namespace platform {

namespace {

struct Mapping {
  unsigned long systemError;
  int number;
};

// The codes are written as numbers: this file is also built where winerror.h is missing.
constexpr Mapping kMappings[] = {
    {2, kFileNotFound},           // ERROR_FILE_NOT_FOUND
    {3, kPathNotFound},           // ERROR_PATH_NOT_FOUND
    {4, kTooManyFiles},           // ERROR_TOO_MANY_OPEN_FILES
    {5, kPermissionDenied},       // ERROR_ACCESS_DENIED
    {8, kOutOfMemory},            // ERROR_NOT_ENOUGH_MEMORY
    {14, kOutOfMemory},           // ERROR_OUTOFMEMORY
    {15, kDeviceUnavailable},     // ERROR_INVALID_DRIVE
    {19, kPermissionDenied},      // ERROR_WRITE_PROTECT
    {21, kDiskNotReady},          // ERROR_NOT_READY
    {29, kDeviceIoError},         // ERROR_WRITE_FAULT
    {30, kDeviceIoError},         // ERROR_READ_FAULT
    {32, kPermissionDenied},      // ERROR_SHARING_VIOLATION
    {33, kPermissionDenied},      // ERROR_LOCK_VIOLATION
    {38, kPastEndOfFile},         // ERROR_HANDLE_EOF
    {39, kDiskFull},              // ERROR_HANDLE_DISK_FULL
    {80, kFileExists},            // ERROR_FILE_EXISTS
    {112, kDiskFull},             // ERROR_DISK_FULL
    {123, kBadFileName},          // ERROR_INVALID_NAME
    {126, kDllNotLoaded},         // ERROR_MOD_NOT_FOUND
    {127, kDllFunctionNotFound},  // ERROR_PROC_NOT_FOUND
    {145, kAccessError},          // ERROR_DIR_NOT_EMPTY
    {183, kFileExists},           // ERROR_ALREADY_EXISTS
    {206, kBadFileName},          // ERROR_FILENAME_EXCED_RANGE
    {267, kPathNotFound},         // ERROR_DIRECTORY
    {1117, kDeviceIoError},       // ERROR_IO_DEVICE
};

}  // namespace

int RuntimeErrorNumberOf(unsigned long systemError) {
  const auto* found = std::find_if(std::begin(kMappings), std::end(kMappings),
                                   [systemError](const Mapping& row) { return row.systemError == systemError; });
  return found != std::end(kMappings) ? found->number : kInvalidCall;
}

void RaiseSystemError(unsigned long systemError) { Raise(RuntimeErrorNumberOf(systemError)); }

void CheckResult(std::int32_t result) {
  if (result < 0) throw RuntimeError{result, "Automation error"};
}

}  // namespace platform
