#include "platform/com_error.h"

#include <algorithm>
#include <iterator>

#include "platform/runtime_error.h"

namespace {

// The codes stand as numbers: this file is also built where winerror.h is missing.
constexpr std::uint32_t kNoSuchObject[] = {
    0x80040110,  // CLASS_E_NOAGGREGATION
    0x80040111,  // CLASS_E_CLASSNOTAVAILABLE
    0x80040150,  // REGDB_E_READREGDB
    0x80040154,  // REGDB_E_CLASSNOTREG
    0x800401F0,  // CO_E_NOTINITIALIZED
    0x800401F8,  // CO_E_DLLNOTFOUND
    0x800401F9,  // CO_E_ERRORINDLL
    0x8007007E,  // ERROR_MOD_NOT_FOUND
    0x8007007F,  // ERROR_PROC_NOT_FOUND
};

}  // namespace

void CheckResult(std::int32_t result) {
  if (result < 0) throw RuntimeError{result, "Automation error"};
}

void CheckCreated(std::int32_t result) {
  const auto code = static_cast<std::uint32_t>(result);
  if (std::find(std::begin(kNoSuchObject), std::end(kNoSuchObject), code) != std::end(kNoSuchObject))
    Raise(kCannotCreateObject);
  CheckResult(result);
}
