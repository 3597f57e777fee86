// Functions that a floor system may lack: looked up when first called, from the DLL in the system folder, by full path.
//
// Calling one that is missing raises run-time error 48 (no such DLL) or 453 (no such function), so the statement fails
// like any other. A call site that has another way asks first: `if (late::DeleteFileWide)`.
#pragma once

#include "platform/runtime_error.h"
#include "platform/win32.h"

namespace platform {

// The address, or null. A DLL that was loaded once stays loaded.
FARPROC FindSystemFunction(const char* dll, const char* name);
bool IsSystemDllPresent(const char* dll);

template <class Signature>
class LateFunction;

template <class Result, class... Arguments>
class LateFunction<Result(WINAPI*)(Arguments...)> {
 public:
  constexpr LateFunction(const char* dll, const char* name) : dll_(dll), name_(name) {}

  Result operator()(Arguments... arguments) const {
    if (!*this) Raise(IsSystemDllPresent(dll_) ? kDllFunctionNotFound : kDllNotLoaded);
    return function_(arguments...);
  }
  explicit operator bool() const {
    if (!looked_) {
      function_ = reinterpret_cast<Function>(reinterpret_cast<void*>(FindSystemFunction(dll_, name_)));
      looked_ = true;
    }
    return function_ != nullptr;
  }

 private:
  using Function = Result(WINAPI*)(Arguments...);
  const char* dll_;
  const char* name_;
  mutable Function function_ = nullptr;
  mutable bool looked_ = false;
};

}  // namespace platform
