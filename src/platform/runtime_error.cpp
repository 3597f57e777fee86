#include "platform/runtime_error.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace platform {

namespace {

struct Wording {
  int number;
  const char* text;
};

constexpr Wording kWordings[] = {
    {kInvalidCall, "Invalid procedure call or argument"},
    {kOverflow, "Overflow"},
    {kOutOfMemory, "Out of memory"},
    {kSubscriptOutOfRange, "Subscript out of range"},
    {kTypeMismatch, "Type mismatch"},
    {kDllNotLoaded, "Error in loading DLL"},
    {kBadFileName, "Bad file name or number"},
    {kFileNotFound, "File not found"},
    {kFileAlreadyOpen, "File already open"},
    {kDeviceIoError, "Device I/O error"},
    {kFileExists, "File already exists"},
    {kDiskFull, "Disk full"},
    {kPastEndOfFile, "Input past end of file"},
    {kTooManyFiles, "Too many files"},
    {kDeviceUnavailable, "Device unavailable"},
    {kPermissionDenied, "Permission denied"},
    {kDiskNotReady, "Disk not ready"},
    {kAccessError, "Path/File access error"},
    {kPathNotFound, "Path not found"},
    {kInvalidPropertyValue, "Invalid property value"},
    {kCannotCreateObject, "ActiveX component can't create object"},
    {kDllFunctionNotFound, "Specified DLL function not found"},
};

}  // namespace

PendingError Err;

const char* RuntimeErrorDescription(int number) {
  const auto* found = std::find_if(std::begin(kWordings), std::end(kWordings),
                                   [number](const Wording& row) { return row.number == number; });
  return found != std::end(kWordings) ? found->text : "Application-defined or object-defined error";
}

void Raise(int number) { throw RuntimeError{number, RuntimeErrorDescription(number)}; }

// A throw out of the C++ library and a failing allocation are run-time errors like the others.
RuntimeError failureOf(Statement statement) {
  try {
    statement();
    return {};
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {kOutOfMemory, RuntimeErrorDescription(kOutOfMemory)};
  }
}

void resumeNext(Statement statement) {
  if (const RuntimeError failure = failureOf(statement)) Err.Set(failure);
}

void quietly(Statement statement) { static_cast<void>(failureOf(statement)); }

}  // namespace platform
