// The standard library's own failures as run-time errors, and a quiet end for what nobody catches.
//
// The library's originals carry message texts, locale tables and a name demangler, some 150 KB that nobody would see:
// every exception of this program is a RuntimeError or bad_alloc.
#include <exception>

#include "platform/runtime_error.h"
#include "platform/win32.h"

namespace std {
using namespace platform;

void __throw_length_error(const char*) { Raise(kOutOfMemory); }
void __throw_logic_error(const char*) { Raise(kInvalidCall); }
void __throw_out_of_range(const char*) { Raise(kInvalidCall); }
void __throw_out_of_range_fmt(const char*, ...) { Raise(kInvalidCall); }
void __throw_bad_function_call() { Raise(kInvalidCall); }
void __throw_bad_array_new_length() { Raise(kOutOfMemory); }
void __throw_bad_alloc() { Raise(kOutOfMemory); }
void __throw_invalid_argument(const char*) { Raise(kInvalidCall); }
void __throw_runtime_error(const char*) { Raise(kInvalidCall); }
void __throw_bad_cast() { Raise(kInvalidCall); }

// Where the library is used against its rules, an index beyond the end for example: an end before any harm. Called and not
// put into its callers, since the texts that nobody reads are left out then.
[[gnu::noinline]] void __glibcxx_assert_fail(const char*, int, const char*, const char*) noexcept { ::ExitProcess(3); }

}  // namespace std

namespace __gnu_cxx {

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library looks for this name
void __verbose_terminate_handler() { ::ExitProcess(3); }

}  // namespace __gnu_cxx
