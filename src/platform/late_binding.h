// Functions that a floor system may lack: looked up when first called, from the DLL in the system folder, by full path.
//
// Calling one that is missing raises run-time error 48 (no such DLL) or 453 (no such function), so the statement fails
// like any other. A call site that has another way asks first: `if (late::DeleteFileWide)`.
#pragma once

#include <bit>

#include "platform/runtime_error.h"
#include "platform/win32.h"

namespace platform {

// The address, or null. A DLL that was loaded once stays loaded.
FARPROC FindSystemFunction(const char* dll, const char* name);
bool IsSystemDllPresent(const char* dll);

// What a function is whatever its arguments are; once in the program for all of them.
class LateAddress {
 public:
  explicit operator bool() const { return Find() != nullptr; }

 protected:
  constexpr LateAddress(const char* dll, const char* name) : dll_(dll), name_(name) {}

  [[gnu::noinline]] FARPROC Find() const {
    if (!looked_) {
      address_ = FindSystemFunction(dll_, name_);
      looked_ = true;
    }
    return address_;
  }
  [[gnu::noinline]] FARPROC Demand() const {
    if (Find() == nullptr) Raise(IsSystemDllPresent(dll_) ? kDllFunctionNotFound : kDllNotLoaded);
    return address_;
  }

 private:
  const char* dll_;
  const char* name_;
  mutable FARPROC address_ = nullptr;
  mutable bool looked_ = false;
};

template <class Signature>
class LateFunction;

template <class Result, class... Arguments>
class LateFunction<Result(WINAPI*)(Arguments...)> : public LateAddress {
 public:
  constexpr LateFunction(const char* dll, const char* name) : LateAddress(dll, name) {}

  Result operator()(Arguments... arguments) const {
    return std::bit_cast<Result(WINAPI*)(Arguments...)>(Demand())(arguments...);
  }
};

}  // namespace platform
