// From the result of a COM call (an HRESULT) to the run-time error that a failing statement raises.
#pragma once

#include <cstdint>

// Throws when `result` is a failure: its own number, "Automation error".
void CheckResult(std::int32_t result);

// The same for the call that creates an object. When there is none to be had, because its class or its library is missing
// or COM does not run on this thread, the number is 429.
void CheckCreated(std::int32_t result);
