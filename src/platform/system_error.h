// From an error code of the system (winerror.h) to the run-time error that a failing statement raises.
#pragma once

// The classic number for `systemError`; kInvalidCall for a code without one of its own.
int RuntimeErrorNumberOf(unsigned long systemError);

// Throws the run-time error for `systemError`, the value of GetLastError or a registry call.
[[noreturn]] void RaiseSystemError(unsigned long systemError);
