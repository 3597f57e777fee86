// From an error code of the system (winerror.h) to the run-time error that a failing statement raises.
#pragma once

#include <cstdint>

namespace platform {

// The classic number for `systemError`; kInvalidCall for a code without one of its own.
int RuntimeErrorNumberOf(unsigned long systemError);

// Throws the run-time error for `systemError`, the value of GetLastError or a registry call.
[[noreturn]] void RaiseSystemError(unsigned long systemError);

// Throws when `result`, the HRESULT of a COM call, tells a failure: its own number and "Automation error".
void CheckResult(std::int32_t result);

}  // namespace platform
