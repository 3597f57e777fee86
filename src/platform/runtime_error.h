// The run-time error of a failing statement, and the two ways of going on after one.
//
// A statement that cannot do its work throws RuntimeError. resumeNext() leaves the error pending in Err and goes on with
// the next statement; reportAndLeave() (ErroHandle.h) tells the user and leaves the procedure. Nothing else in the
// program handles errors.
#pragma once

#include <new>
#include <string>
#include <utility>

namespace platform {

struct RuntimeError {
  int number;
  std::string description;
};

// The numbers of the classic run-time error list that the program raises.
enum RuntimeErrorNumber : int {
  kInvalidCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kTypeMismatch = 13,
  kDllNotLoaded = 48,
  kBadFileName = 52,
  kFileNotFound = 53,
  kFileAlreadyOpen = 55,
  kDeviceIoError = 57,
  kFileExists = 58,
  kDiskFull = 61,
  kPastEndOfFile = 62,
  kTooManyFiles = 67,
  kDeviceUnavailable = 68,
  kPermissionDenied = 70,
  kDiskNotReady = 71,
  kAccessError = 75,
  kPathNotFound = 76,
  kInvalidPropertyValue = 380,
  kCannotCreateObject = 429,
  kDllFunctionNotFound = 453,
};

// The wording of the classic list for `number`; "Application-defined or object-defined error" for one it does not hold.
const char* RuntimeErrorDescription(int number);

// Throws the RuntimeError of that number with its classic wording.
[[noreturn]] void Raise(int number);

// The pending error: number 0 and an empty description when nothing failed since it was cleared.
class PendingError {
 public:
  int Number() const { return number_; }
  const std::string& Description() const { return description_; }
  void Set(const RuntimeError& error);
  void Clear();

 private:
  int number_ = 0;
  std::string description_;
};

extern PendingError Err;

// Runs one statement. A failure stays pending in Err, and the caller goes on with its next statement.
template <class Statement>
void resumeNext(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const RuntimeError& error) {
    Err.Set(error);
  } catch (const std::bad_alloc&) {
    Err.Set({kOutOfMemory, RuntimeErrorDescription(kOutOfMemory)});
  }
}

}  // namespace platform
