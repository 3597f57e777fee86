// The run-time error of a failing statement, and the ways of going on after one.
//
// A statement that cannot do its work throws RuntimeError. The trap around it decides what follows:
//   resumeNext      the error stays pending in Err, the caller goes on with its next statement
//   quietly         nobody hears of it, Err stays as it was
//   failureOf       the same, and the caller learns whether and how it failed
//   valueOr         the statement's value, or the given one where it failed
//   reportAndLeave  the user is told (ErroHandle.h)
// Nothing else in the program handles errors, and nobody but these touches Err.
#pragma once

#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

namespace platform {

// Converts to true where there is an error. The description is a literal: keeping an error costs no memory, also where the
// error is that there is none.
struct RuntimeError {
  int number = 0;
  const char* description = "";

  explicit operator bool() const { return number != 0; }
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

// A callable without arguments, by reference, to be run inside a trap; it does not outlive the call of the trap. One class
// for all of them, so that each trap exists once in the program and not once for each statement.
class Statement {
 public:
  template <class Callable, class = std::enable_if_t<!std::is_same_v<std::remove_cvref_t<Callable>, Statement>>>
  Statement(Callable&& callable)  // not explicit: a lambda is handed over as it is written in the call
      : object_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
        run_([](void* object) { static_cast<void>((*static_cast<std::remove_reference_t<Callable>*>(object))()); }) {}

  void operator()() const { run_(object_); }

 private:
  void* object_;
  void (*run_)(void*);
};

void resumeNext(Statement statement);
void quietly(Statement statement);
[[nodiscard]] RuntimeError failureOf(Statement statement);

// `otherwise` where the statement fails.
template <class Value, class Callable>
[[nodiscard]] Value valueOr(Value otherwise, Callable&& statement) {
  quietly([&] { otherwise = statement(); });
  return otherwise;
}

// The pending error: number 0 and an empty description when nothing failed since it was cleared.
class PendingError {
 public:
  int Number() const { return error_.number; }
  std::string_view Description() const { return error_.description; }
  void Set(const RuntimeError& error) { error_ = error; }
  void Clear() { error_ = {}; }

 private:
  RuntimeError error_;
};

extern PendingError Err;

// While one lives, errors come and go; at its end the one that was pending before is pending again. For an event, which
// comes in the middle of somebody else's statement.
class PendingErrorKept {
 public:
  PendingErrorKept() : before_(Err) {}
  PendingErrorKept(const PendingErrorKept&) = delete;
  PendingErrorKept& operator=(const PendingErrorKept&) = delete;
  ~PendingErrorKept() { Err = before_; }

 private:
  PendingError before_;
};

}  // namespace platform
